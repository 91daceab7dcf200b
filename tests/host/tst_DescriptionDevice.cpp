// SPDX-License-Identifier: MIT
#include <QtTest>

#include "Devices/DescriptionDevice.h"
#include "Features/NodeText.h"

namespace {

constexpr char Description[] = R"(<RegisterDescription>
  <Category Name="Root"><pFeature>Low</pFeature><pFeature>High</pFeature></Category>
  <IntReg Name="Low"><Address>0</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort></IntReg>
  <IntReg Name="High">
    <Address>0xFFFFFFFFFFFF</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>
    <Sign>Unsigned</Sign>
  </IntReg>
  <Port Name="Device"/>
</RegisterDescription>
)";

} // namespace

class tst_DescriptionDevice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void featuresWorkOnMemory()
    {
        write(Description);
        DescriptionDevice device(m_path);
        const auto value = [&](const char *node) { return readNodeText(*device.nodeMap(), QLatin1String(node)); };
        QString error;
        QVERIFY2(device.open(&error), qPrintable(error));
        QVERIFY(device.open(&error));
        QCOMPARE(value("High"), QStringLiteral("0"));
        writeNodeText(*device.nodeMap(), QStringLiteral("High"), QStringLiteral("4294967295"));
        device.nodeMap()->InvalidateNodes();
        QCOMPARE(value("High"), QStringLiteral("4294967295"));
        QCOMPARE(value("Low"), QStringLiteral("0"));
        QVERIFY(!device.startAcquisition(&error));
        device.close();
        QVERIFY(!device.nodeMap());
        QVERIFY(device.open(&error));
        QCOMPARE(value("High"), QStringLiteral("0"));
    }

    void refusesWithAReason()
    {
        const QByteArray contents[] = {"", "Width = 640", "PK\3\4 and no more", QByteArray(Description, 200),
                                       "missing"};
        for (const QByteArray &content : contents) {
            write(content);
            if (content == "missing")
                QVERIFY(QFile::remove(m_path));
            DescriptionDevice device(m_path);
            QString error;
            QVERIFY2(!device.open(&error), content);
            QVERIFY2(!error.isEmpty() && !device.isOpen(), content);
        }
    }

private:
    void write(const QByteArray &content)
    {
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath(QStringLiteral("camera.xml"));
};

QTEST_GUILESS_MAIN(tst_DescriptionDevice)
#include "tst_DescriptionDevice.moc"
