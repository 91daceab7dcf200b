// SPDX-License-Identifier: MIT
#include <QHelpEvent>
#include <QImage>
#include <QTest>

#include "ToolPage/RowLabel.h"

class tst_RowLabel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void toolTipTellsWhatIsHidden_data();
    void toolTipTellsWhatIsHidden();
};

void tst_RowLabel::toolTipTellsWhatIsHidden_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("widthShare");
    QTest::addColumn<int>("lines");
    QTest::addColumn<bool>("isHidden");
    const QString phrase = QStringLiteral("Acquisition Frame Rate");
    QTest::newRow("fits on one line") << phrase << 1.1 << 1 << false;
    QTest::newRow("fits on two lines") << phrase << 0.9 << 2 << false;
    QTest::newRow("one line is too short") << phrase << 0.8 << 1 << true;
    QTest::newRow("two lines are too short") << phrase << 0.3 << 2 << true;
    QTest::newRow("breaks compound names") << QStringLiteral("AcquisitionFrameRateEnable") << 0.65 << 2 << false;
}

void tst_RowLabel::toolTipTellsWhatIsHidden()
{
    QFETCH(QString, text);
    QFETCH(double, widthShare);
    QFETCH(int, lines);
    QFETCH(bool, isHidden);
    RowLabel label;
    label.setText(text);
    const QFontMetrics metrics = label.fontMetrics();
    label.resize(int(metrics.horizontalAdvance(label.text()) * widthShare), metrics.height() * lines);
    QHelpEvent event(QEvent::ToolTip, QPoint(1, 1), QPoint(1, 1));
    QCoreApplication::sendEvent(&label, &event);
    QCOMPARE(label.toolTip(), isHidden ? label.text() : QString());
}

QTEST_MAIN(tst_RowLabel)
#include "tst_RowLabel.moc"
