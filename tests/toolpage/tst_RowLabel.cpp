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
    QTest::addColumn<double>("widthShare");
    QTest::addColumn<int>("lines");
    QTest::addColumn<bool>("isHidden");
    QTest::newRow("fits on one line") << 1.1 << 1 << false;
    QTest::newRow("fits on two lines") << 0.9 << 2 << false;
    QTest::newRow("one line is too short") << 0.8 << 1 << true;
    QTest::newRow("two lines are too short") << 0.3 << 2 << true;
}

void tst_RowLabel::toolTipTellsWhatIsHidden()
{
    QFETCH(double, widthShare);
    QFETCH(int, lines);
    QFETCH(bool, isHidden);
    RowLabel label;
    label.setText(QStringLiteral("Acquisition Frame Rate"));
    const QFontMetrics metrics = label.fontMetrics();
    label.resize(int(metrics.horizontalAdvance(label.text()) * widthShare), metrics.height() * lines);
    QHelpEvent event(QEvent::ToolTip, QPoint(1, 1), QPoint(1, 1));
    QCoreApplication::sendEvent(&label, &event);
    QCOMPARE(label.toolTip(), isHidden ? label.text() : QString());
}

QTEST_MAIN(tst_RowLabel)
#include "tst_RowLabel.moc"
