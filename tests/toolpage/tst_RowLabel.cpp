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
    QTest::addColumn<QString>("font");
    const QString phrase = QStringLiteral("Acquisition Frame Rate");
    QTest::newRow("fits on one line") << phrase << 1.1 << 1 << false << QString();
    QTest::newRow("fits on two lines") << phrase << 0.9 << 2 << false << QString();
    QTest::newRow("one line is too short") << phrase << 0.8 << 1 << true << QString();
    QTest::newRow("two lines are too short") << phrase << 0.3 << 2 << true << QString();
    // Its lines are half as tall again as its size.
    QTest::newRow("two lines of a tall font") << phrase << 0.9 << 2 << false << QStringLiteral("Noto Sans CJK SC");
    QTest::newRow("breaks compound names")
        << QStringLiteral("AcquisitionFrameRateEnable") << 0.65 << 2 << false << QString();
}

void tst_RowLabel::toolTipTellsWhatIsHidden()
{
    QFETCH(QString, text);
    QFETCH(double, widthShare);
    QFETCH(int, lines);
    QFETCH(bool, isHidden);
    QFETCH(QString, font);
    RowLabel label;
    label.setText(text);
    const int lineHeight = label.fontMetrics().height();
    if (!font.isEmpty())
        label.setFont(QFont(font, label.font().pointSize()));
    label.resize(int(label.fontMetrics().horizontalAdvance(label.text()) * widthShare), lineHeight * lines);
    QHelpEvent event(QEvent::ToolTip, QPoint(1, 1), QPoint(1, 1));
    QCoreApplication::sendEvent(&label, &event);
    QCOMPARE(label.toolTip(), isHidden ? label.text() : QString());
}

QTEST_MAIN(tst_RowLabel)
#include "tst_RowLabel.moc"
