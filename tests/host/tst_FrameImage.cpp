// SPDX-License-Identifier: MIT
#include <QColor>
#include <QtTest>

#include "Devices/FrameImage.h"
#include "Devices/FrameMailbox.h"

class tst_FrameImage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void convertsPixels_data();
    void convertsPixels();
    void keepsLinesApart();
    void bayerFramesGetTheirColors_data();
    void bayerFramesGetTheirColors();
    void theNewestFramesWait();
    void refusesWhatItCannotShow_data();
    void refusesWhatItCannotShow();
};

void tst_FrameImage::convertsPixels_data()
{
    QTest::addColumn<uint>("format");
    QTest::addColumn<QByteArray>("pixel");
    QTest::addColumn<QColor>("color");
    const auto gray = [](int level) { return QColor(level, level, level); };
    QTest::newRow("Mono8") << 0x01080001u << QByteArray("\x80", 1) << gray(0x80);
    QTest::newRow("BayerBG8 too small for colours") << 0x0108000Bu << QByteArray("\x7f", 1) << gray(0x7f);
    QTest::newRow("Mono10") << 0x01100003u << QByteArray("\xff\x03", 2) << gray(0xff);
    QTest::newRow("Mono12") << 0x01100005u << QByteArray("\x00\x08", 2) << gray(0x80);
    QTest::newRow("Mono12 beyond its bits") << 0x01100005u << QByteArray("\xff\xff", 2) << gray(0xff);
    QTest::newRow("BayerRG12 too small for colours") << 0x01100011u << QByteArray("\x30\x04", 2) << gray(0x43);
    QTest::newRow("Mono16") << 0x01100007u << QByteArray("\xff\x20", 2) << gray(0x20);
    QTest::newRow("RGB8") << 0x02180014u << QByteArray("\x01\x02\x03", 3) << QColor(1, 2, 3);
    QTest::newRow("BGR8") << 0x02180015u << QByteArray("\x01\x02\x03", 3) << QColor(3, 2, 1);
}

void tst_FrameImage::convertsPixels()
{
    QFETCH(uint, format);
    QFETCH(QByteArray, pixel);
    QFETCH(QColor, color);
    const QImage image = frameImage(format, 1, 1, pixel.constData(), static_cast<std::size_t>(pixel.size()));
    QCOMPARE(image.size(), QSize(1, 1));
    QCOMPARE(image.pixelColor(0, 0).rgb(), color.rgb());
}

/// QImage pads its lines to words, frames do not.
void tst_FrameImage::keepsLinesApart()
{
    const QByteArray data("\x0a\x0b\x0c\x0d\x0e\x0f", 6);
    const QImage image = frameImage(0x01080001, 3, 2, data.constData(), 6);
    QCOMPARE(qGray(image.pixel(2, 0)), 0x0c);
    QCOMPARE(qGray(image.pixel(0, 1)), 0x0d);
}

void tst_FrameImage::bayerFramesGetTheirColors_data()
{
    QTest::addColumn<uint>("format");
    QTest::addColumn<int>("bits");
    QTest::addColumn<QByteArray>("order");
    QTest::newRow("GR8") << 0x01080008u << 8 << QByteArray("GRBG");
    QTest::newRow("RG8") << 0x01080009u << 8 << QByteArray("RGGB");
    QTest::newRow("GB8") << 0x0108000Au << 8 << QByteArray("GBRG");
    QTest::newRow("BG8") << 0x0108000Bu << 8 << QByteArray("BGGR");
    QTest::newRow("GB10") << 0x0110000Eu << 10 << QByteArray("GBRG");
    QTest::newRow("RG16") << 0x0110002Fu << 16 << QByteArray("RGGB");
}

/// A scene of one colour has it everywhere, on the edges too; `order` is the colour of four pixels, two a line.
void tst_FrameImage::bayerFramesGetTheirColors()
{
    QFETCH(uint, format);
    QFETCH(int, bits);
    QFETCH(QByteArray, order);
    const QSize size(5, 4);
    QByteArray data;
    for (int i = 0; i < size.width() * size.height(); ++i) {
        const char color = order[i / size.width() % 2 * 2 + i % size.width() % 2];
        const int sample = (color == 'R' ? 200 : color == 'G' ? 100 : 50) << (bits - 8);
        data.append(char(sample & 0xFF));
        if (bits > 8)
            data.append(char(sample >> 8));
    }
    QImage scene(size, QImage::Format_RGB888);
    scene.fill(QColor(200, 100, 50));
    QCOMPARE(frameImage(format, size.width(), size.height(), data.constData(), std::size_t(data.size())), scene);
}

void tst_FrameImage::theNewestFramesWait()
{
    FrameMailbox mailbox;
    int announced = 0;
    for (int width = 1; width <= 5; ++width)
        announced += mailbox.put(QImage(width, 1, QImage::Format_Grayscale8));
    QCOMPARE(announced, 3);
    for (int width = 3; width <= 5; ++width)
        QCOMPARE(mailbox.take().width(), width);
}

void tst_FrameImage::refusesWhatItCannotShow_data()
{
    QTest::addColumn<uint>("format");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::newRow("unknown format") << 0x12345678u << 2 << 2;
    QTest::newRow("too little data") << 0x01080001u << 3 << 2;
    QTest::newRow("too little data per sample") << 0x01100003u << 2 << 2;
    QTest::newRow("no width") << 0x01080001u << 0 << 2;
    QTest::newRow("negative height") << 0x01080001u << 2 << -1;
    QTest::newRow("huge") << 0x01080001u << 0x7fffffff << 0x7fffffff;
}

void tst_FrameImage::refusesWhatItCannotShow()
{
    QFETCH(uint, format);
    QFETCH(int, width);
    QFETCH(int, height);
    QVERIFY(frameImage(format, width, height, "abcd", 4).isNull());
}

QTEST_APPLESS_MAIN(tst_FrameImage)
#include "tst_FrameImage.moc"
