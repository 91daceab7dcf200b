// SPDX-License-Identifier: MIT
#include <QColor>
#include <QtTest>

#include "Devices/FrameImage.h"
#include "Devices/FrameMailbox.h"

class tst_FrameImage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void convertsPixels()
    {
        const struct
        {
            const char *name;
            uint format;
            QByteArray pixel;
            QRgb color;
        } rows[] = {{"Mono8", 0x01080001, QByteArray("\x80", 1), 0xff808080},
                    {"BayerBG8 too small for colours", 0x0108000B, QByteArray("\x7f", 1), 0xff7f7f7f},
                    {"Mono10", 0x01100003, QByteArray("\xff\x03", 2), 0xffffffff},
                    {"Mono12", 0x01100005, QByteArray("\x00\x08", 2), 0xff808080},
                    {"Mono12 beyond its bits", 0x01100005, QByteArray("\xff\xff", 2), 0xffffffff},
                    {"BayerRG12 too small for colours", 0x01100011, QByteArray("\x30\x04", 2), 0xff434343},
                    {"Mono16", 0x01100007, QByteArray("\xff\x20", 2), 0xff202020},
                    {"RGB8", 0x02180014, QByteArray("\x01\x02\x03", 3), 0xff010203},
                    {"BGR8", 0x02180015, QByteArray("\x01\x02\x03", 3), 0xff030201}};
        for (const auto &row : rows) {
            const QImage image = frameImage(row.format, 1, 1, row.pixel.constData(), size_t(row.pixel.size()));
            QVERIFY2(image.size() == QSize(1, 1) && image.pixel(0, 0) == row.color, row.name);
        }
    }

    /// QImage pads its lines to words, frames do not.
    void keepsLinesApart()
    {
        const QImage image = frameImage(0x01080001, 3, 2, "\x0a\x0b\x0c\x0d\x0e\x0f", 6);
        QCOMPARE(qGray(image.pixel(2, 0)), 0x0c);
        QCOMPARE(qGray(image.pixel(0, 1)), 0x0d);
    }

    /// A scene of one colour has it everywhere, on the edges too; `order` is the colour of four pixels, two a line.
    void bayerFramesGetTheirColors()
    {
        const struct
        {
            uint format;
            int bits;
            const char *order;
        } rows[] = {{0x01080008, 8, "GRBG"}, {0x01080009, 8, "RGGB"},  {0x0108000A, 8, "GBRG"},
                    {0x0108000B, 8, "BGGR"}, {0x0110000E, 10, "GBRG"}, {0x0110002F, 16, "RGGB"}};
        for (const auto &row : rows) {
            const QSize size(5, 4);
            QByteArray data;
            for (int i = 0; i < size.width() * size.height(); ++i) {
                const char color = row.order[i / size.width() % 2 * 2 + i % size.width() % 2];
                const int sample = (color == 'R' ? 200 : color == 'G' ? 100 : 50) << (row.bits - 8);
                data.append(char(sample & 0xFF));
                if (row.bits > 8)
                    data.append(char(sample >> 8));
            }
            QImage scene(size, QImage::Format_RGB888);
            scene.fill(QColor(200, 100, 50));
            const QImage image = frameImage(row.format, 5, 4, data.constData(), size_t(data.size()));
            QVERIFY2(image == scene, qPrintable(QString::number(row.format, 16)));
        }
    }

    void theNewestFramesWait()
    {
        FrameMailbox mailbox;
        int announced = 0;
        for (int width = 1; width <= 5; ++width)
            announced += mailbox.put(QImage(width, 1, QImage::Format_Grayscale8));
        QCOMPARE(announced, 3);
        for (int width = 3; width <= 5; ++width)
            QCOMPARE(mailbox.take().width(), width);
    }

    void refusesWhatItCannotShow()
    {
        const struct
        {
            const char *name;
            uint format;
            int width, height;
        } rows[] = {{"unknown format", 0x12345678, 2, 2},
                    {"too little data", 0x01080001, 3, 2},
                    {"too little data per sample", 0x01100003, 2, 2},
                    {"no width", 0x01080001, 0, 2},
                    {"negative height", 0x01080001, 2, -1},
                    {"huge", 0x01080001, 0x7fffffff, 0x7fffffff}};
        for (const auto &row : rows)
            QVERIFY2(frameImage(row.format, row.width, row.height, "abcd", 4).isNull(), row.name);
    }
};

QTEST_APPLESS_MAIN(tst_FrameImage)
#include "tst_FrameImage.moc"
