// SPDX-License-Identifier: MIT
#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QTest>

#include "Resources/Icons.h"

/// The images that hosts and the style sheet rely on.
class tst_Icons : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sizes_data();
    void sizes();
    void holdsNothingElse();
    void styleSheetNamesOnlyWhatExists();
};

void tst_Icons::sizes_data()
{
    QTest::addColumn<QString>("directory");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QSize>("size");
    const auto row = [](const char *directory, const char *names, int width, int height) {
        QTest::addRow("%s: %s", directory, names)
            << QString::fromLatin1(directory) << QString::fromLatin1(names).split(QLatin1Char(' '))
            << QSize(width, height);
    };
    row("up", "normal selected disable hover", 12, 8);
    row("down", "normal selected disable hover", 12, 8);
    row("close", "clicked normal hover", 24, 24);
    row("selectRoi", "clicked normal selected hover", 36, 37);
    row("selectRoi", "disable", 36, 36);
    row("selectSpinRoi", "clicked normal selected disable hover", 36, 36);
    row("combobox", "downAndLine", 20, 28);
    row("search", "normal", 20, 20);
    row("switch", "switchON switchON-disable switchOFF switchOFF-disable", 44, 20);
    row("pullDownIcon", "normal disable", 8, 6);
}

void tst_Icons::sizes()
{
    QFETCH(QString, directory);
    QFETCH(QStringList, names);
    for (const QString &name : std::as_const(names)) {
        const QString stem = QStringLiteral(":/Resources/icon/%1/%2").arg(directory, name);
        const QImage image(stem + QStringLiteral(".png"));
        QTEST(image.size(), "size");
        QVERIFY2(!QImage(stem + QStringLiteral("@2x.png")).isNull(), qPrintable(stem));
        QVERIFY2(image != QImage(image.size(), image.format()), "nothing is drawn");
    }
}

void tst_Icons::holdsNothingElse()
{
    int count = 0;
    QDirIterator files(QStringLiteral(":/Resources/icon"), {QStringLiteral("*.png")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext())
        count += !files.next().contains(QLatin1String("@2x"));
    QCOMPARE(count, 29);
}

void tst_Icons::styleSheetNamesOnlyWhatExists()
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

QTEST_GUILESS_MAIN(tst_Icons)
#include "tst_Icons.moc"
