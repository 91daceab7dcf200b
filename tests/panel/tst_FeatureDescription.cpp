// SPDX-License-Identifier: MIT
#include <QTextDocument>

#include "FaultyNode.h"
#include "PanelDescription.h"
#include "ParamterWidget/FeatureDescription.h"
#include "support/Rows.h"

namespace {

/// The description as a person reads it, one line a list entry.
QStringList readable(const QString &html)
{
    QTextDocument document;
    document.setHtml(html);
    return document.toPlainText().split(QLatin1Char('\n'));
}

} // namespace

class tst_FeatureDescription : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lines()
    {
        // Name, description, then type, namespace, visibility and streamable, then the rest.
        const std::tuple<const char *, const char *, const char *, const char *> rows[] = {
            {"Width", "Width of the image <in pixels>, 宽度.", "Integer Standard Beginner Yes",
             "Min: 16|Max: 1920|Inc: 4|Unit: px"},
            {"Height", "", "Integer Custom Beginner No", "Min: 8|Max: 1080|Inc: 8"},
            {"Flags", "", "Integer Custom Beginner No", ""},
            {"Gamma", "", "Float Custom Expert No", "Min: 0.25|Max: 4"},
            {"ExposureTime", "", "Float Custom Beginner No", "Min: 10|Max: 1e+06|Unit: us"},
            {"Mode", "", "Enumeration Custom Beginner No",
             " |Switched off|Description: Nothing happens.|Enum Entry Name: Off|Enum Entry Value: 0|NameSpace: Standard"
             "| |Single|Description:|Enum Entry Name: Single|Enum Entry Value: 1|NameSpace: Custom"
             "| |Steady|Description:|Enum Entry Name: Steady|Enum Entry Value: 2.5|NameSpace: Custom"},
            {"Analog", "", "Category Custom Beginner No", ""}};
        for (const auto &[name, description, properties, rest] : rows) {
            const InRow inRow(name);
            const QStringList values = words(properties);
            QStringList expected = {QLatin1String(name), QString::fromUtf8(description), QString()};
            expected << "NodeType: "_s + values[0] << "NameSpace: "_s + values[1] << "Visibility: "_s + values[2]
                     << "Streamable: "_s + values[3] << words(rest, '|');
            QStringList actual = readable(featureDescription(m_camera.node(name)));
            while (!actual.isEmpty() && actual.last().isEmpty())
                actual.removeLast();
            for (QStringList *lines : {&actual, &expected})
                lines->replaceInStrings(QRegularExpression("\\s+$"_s), QString());
            QCOMPARE(actual, expected);
        }
    }

    void placeholdersInTexts()
    {
        TestCamera camera(
            TestCamera::description("<Category Name=\"Root\"><pFeature>Share</pFeature></Category>"
                                    "<Integer Name=\"Share\"><Description>%1 of %2 &amp; 100%</Description>"
                                    "<Value>1</Value><Unit>%1</Unit></Integer><Port Name=\"Device\"/>"));
        const QStringList lines = readable(featureDescription(camera.node("Share")));
        QCOMPARE(lines.value(1), "%1 of %2 & 100%"_s);
        QVERIFY(lines.contains("Unit: %1"_s));
    }

    void endsWhereTheNodeFails()
    {
        TestCamera camera(TestCamera::description(
            "<Category Name=\"Root\"><pFeature>Size</pFeature></Category>"
            "<Integer Name=\"Size\"><Value>1</Value><Min>0</Min><pMax>MaxReg</pMax></Integer>"
            "<IntReg Name=\"MaxReg\"><Address>0</Address><Length>4</Length><AccessMode>RO</AccessMode>"
            "<pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>"
            "<Port Name=\"Device\"/>"));
        camera.port.readFault = MemoryPort::Fault::Timeout;
        const QString html = featureDescription(camera.node("Size"));
        QVERIFY(html.startsWith("<span style='color: green;'>Size</span><br><br><br>NodeType:<span"_s));
        QVERIFY2(html.endsWith("Min:<span style='color: green;'> 0</span><br>"_s), qPrintable(html));
    }

    void faultyNodes()
    {
        FaultyNode node([] { throw RUNTIME_EXCEPTION("refused"); });
        QCOMPARE(featureDescription(&node), QString());
    }

private:
    PanelCamera m_camera;
};

QTEST_MAIN(tst_FeatureDescription)
#include "tst_FeatureDescription.moc"
