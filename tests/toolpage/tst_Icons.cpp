// SPDX-License-Identifier: MIT
#include <QFile>
#include <QImage>
#include <QRegularExpression>

#include "Resources/Icons.h"
#include "support/Rows.h"

/// The images that hosts and the style sheet rely on.
class tst_Icons : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sizes()
    {
        const std::tuple<const char *, const char *, QSize> rows[] = {
            {"up", "normal selected disable hover", {12, 8}},
            {"down", "normal selected disable hover", {12, 8}},
            {"close", "clicked normal hover", {24, 24}},
            {"selectRoi", "clicked normal selected hover", {36, 37}},
            {"selectRoi", "disable", {36, 36}},
            {"selectSpinRoi", "clicked normal selected disable hover", {36, 36}},
            {"combobox", "downAndLine", {20, 28}},
            {"search", "normal", {20, 20}},
            {"switch", "switchON switchON-disable switchOFF switchOFF-disable", {44, 20}},
            {"pullDownIcon", "normal disable", {8, 6}}};
        for (const auto &[name, files, size] : rows) {
            const InRow at(name);
            for (const QString &file : QString::fromLatin1(files).split(QLatin1Char(' '))) {
                const QString stem = QStringLiteral(":/Resources/icon/%1/%2").arg(QLatin1String(name), file);
                const QImage image(stem + QStringLiteral(".png"));
                QCOMPARE(image.size(), size);
                QVERIFY2(!QImage(stem + QStringLiteral("@2x.png")).isNull(), qPrintable(stem));
                QVERIFY2(image != QImage(image.size(), image.format()), "nothing is drawn");
            }
        }
    }

    void styleSheetNamesOnlyWhatExists()
    {
        QFile file(Icons::PanelStyleSheet);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(file.readAll());
        QRegularExpressionMatchIterator urls = QRegularExpression(QStringLiteral("url\\((.*)\\)")).globalMatch(text);
        QVERIFY(urls.hasNext());
        while (urls.hasNext()) {
            const QString path = urls.next().captured(1);
            const bool isOurs = !path.startsWith(QLatin1String(":/Resources/icons/camera/"));
            QVERIFY2(!isOurs || QFile::exists(path), qPrintable(path));
        }
    }
};

QTEST_GUILESS_MAIN(tst_Icons)
#include "tst_Icons.moc"
