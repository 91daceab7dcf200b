// SPDX-License-Identifier: MIT
#include <QTextDocument>
#include <QtTest>

#include "FaultyNode.h"
#include "PanelDescription.h"
#include "ParamterWidget/FeatureDescription.h"

namespace {

/// The description as a person reads it, one line a list entry.
QStringList readable(const QString &html)
{
    QTextDocument document;
    document.setHtml(html);
    return document.toPlainText().split(QLatin1Char('\n'));
}

QStringList properties(const char *type, const char *nameSpace, const char *visibility, const char *streamable)
{
    return {QStringLiteral("NodeType: %1").arg(QLatin1String(type)),
            QStringLiteral("NameSpace: %1").arg(QLatin1String(nameSpace)),
            QStringLiteral("Visibility: %1").arg(QLatin1String(visibility)),
            QStringLiteral("Streamable: %1").arg(QLatin1String(streamable))};
}

} // namespace

class tst_FeatureDescription : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lines_data();
    void lines();
    void placeholdersInTexts();
    void endsWhereTheNodeFails();
    void faultyNodes();

private:
    PanelCamera m_camera;
};

void tst_FeatureDescription::lines_data()
{
    QTest::addColumn<QByteArray>("node");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *node, const char *description, const QStringList &rest) {
        QTest::newRow(node) << QByteArray(node)
                            << QStringList({QLatin1String(node), QString::fromUtf8(description), QString()}) + rest;
    };
    row("Width", "Width of the image <in pixels>, 宽度.",
        properties("Integer", "Standard", "Beginner", "Yes")
            + QStringList({QStringLiteral("Min: 16"), QStringLiteral("Max: 1920"), QStringLiteral("Inc: 4"),
                           QStringLiteral("Unit: px")}));
    row("Height", "",
        properties("Integer", "Custom", "Beginner", "No")
            + QStringList({QStringLiteral("Min: 8"), QStringLiteral("Max: 1080"), QStringLiteral("Inc: 8")}));
    row("Flags", "", properties("Integer", "Custom", "Beginner", "No"));
    row("Gamma", "",
        properties("Float", "Custom", "Expert", "No")
            + QStringList({QStringLiteral("Min: 0.25"), QStringLiteral("Max: 4")}));
    row("ExposureTime", "",
        properties("Float", "Custom", "Beginner", "No")
            + QStringList({QStringLiteral("Min: 10"), QStringLiteral("Max: 1e+06"), QStringLiteral("Unit: us")}));
    row("Mode", "",
        properties("Enumeration", "Custom", "Beginner", "No")
            + QStringList({QString(), QStringLiteral("Switched off"), QStringLiteral("Description: Nothing happens."),
                           QStringLiteral("Enum Entry Name: Off"), QStringLiteral("Enum Entry Value: 0"),
                           QStringLiteral("NameSpace: Standard"), QString(), QStringLiteral("Single"),
                           QStringLiteral("Description: "), QStringLiteral("Enum Entry Name: Single"),
                           QStringLiteral("Enum Entry Value: 1"), QStringLiteral("NameSpace: Custom"), QString(),
                           QStringLiteral("Steady"), QStringLiteral("Description: "),
                           QStringLiteral("Enum Entry Name: Steady"), QStringLiteral("Enum Entry Value: 2.5"),
                           QStringLiteral("NameSpace: Custom")}));
    row("Name", "", properties("String", "Custom", "Beginner", "No"));
    row("TriggerSoftware", "", properties("Command", "Custom", "Beginner", "No"));
    row("Analog", "", properties("Category", "Custom", "Beginner", "No"));
}

void tst_FeatureDescription::lines()
{
    QFETCH(QByteArray, node);
    QFETCH(QStringList, expected);
    QStringList actual = readable(featureDescription(m_camera.node(node.constData())));
    while (!actual.isEmpty() && actual.last().isEmpty())
        actual.removeLast();
    for (QStringList *lines : {&actual, &expected})
        lines->replaceInStrings(QRegularExpression(QStringLiteral("\\s+$")), QString());
    QCOMPARE(actual, expected);
}

void tst_FeatureDescription::placeholdersInTexts()
{
    TestCamera camera(TestCamera::description("<Category Name=\"Root\"><pFeature>Share</pFeature></Category>"
                                              "<Integer Name=\"Share\"><Description>%1 of %2 &amp; 100%</Description>"
                                              "<Value>1</Value><Unit>%1</Unit></Integer><Port Name=\"Device\"/>"));
    const QStringList lines = readable(featureDescription(camera.node("Share")));
    QCOMPARE(lines.value(1), QStringLiteral("%1 of %2 & 100%"));
    QVERIFY(lines.contains(QStringLiteral("Unit: %1")));
}

void tst_FeatureDescription::endsWhereTheNodeFails()
{
    TestCamera camera(TestCamera::description(
        "<Category Name=\"Root\"><pFeature>Size</pFeature></Category>"
        "<Integer Name=\"Size\"><Value>1</Value><Min>0</Min><pMax>MaxReg</pMax></Integer>"
        "<IntReg Name=\"MaxReg\"><Address>0</Address><Length>4</Length><AccessMode>RO</AccessMode>"
        "<pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>"
        "<Port Name=\"Device\"/>"));
    camera.port.readFault = MemoryPort::Fault::Timeout;
    const QString html = featureDescription(camera.node("Size"));
    QVERIFY(html.startsWith(QStringLiteral("<span style='color: green;'>Size</span><br><br><br>NodeType:<span")));
    QVERIFY2(html.endsWith(QStringLiteral("Min:<span style='color: green;'> 0</span><br>")), qPrintable(html));
}

void tst_FeatureDescription::faultyNodes()
{
    FaultyNode node([] { throw RUNTIME_EXCEPTION("refused"); });
    QCOMPARE(featureDescription(&node), QString());
}

QTEST_MAIN(tst_FeatureDescription)
#include "tst_FeatureDescription.moc"
