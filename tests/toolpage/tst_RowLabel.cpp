// SPDX-License-Identifier: MIT
#include <QHelpEvent>

#include "FailedAt.h"
#include "ToolPage/RowLabel.h"

class tst_RowLabel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void toolTipTellsWhatIsHidden()
    {
        const char *const phrase = "Acquisition Frame Rate";
        const std::tuple<const char *, const char *, double, int, bool, const char *> rows[] = {
            {"fits on one line", phrase, 1.1, 1, false, nullptr},
            {"fits on two lines", phrase, 0.9, 2, false, nullptr},
            {"one line is too short", phrase, 0.8, 1, true, nullptr},
            {"two lines are too short", phrase, 0.3, 2, true, nullptr},
            // Its lines are half as tall again as its size.
            {"two lines of a tall font", phrase, 0.9, 2, false, "Noto Sans CJK SC"},
            {"breaks compound names", "AcquisitionFrameRateEnable", 0.65, 2, false, nullptr}};
        for (const auto &[name, text, widthShare, lines, isHidden, font] : rows) {
            const FailedAt at(name);
            RowLabel label;
            label.setText(QLatin1String(text));
            const int lineHeight = label.fontMetrics().height();
            if (font)
                label.setFont(QFont(QLatin1String(font), label.font().pointSize()));
            label.resize(int(label.fontMetrics().horizontalAdvance(label.text()) * widthShare), lineHeight * lines);
            QHelpEvent event(QEvent::ToolTip, QPoint(1, 1), QPoint(1, 1));
            QCoreApplication::sendEvent(&label, &event);
            QCOMPARE(label.toolTip(), isHidden ? label.text() : QString());
        }
    }
};

QTEST_MAIN(tst_RowLabel)
#include "tst_RowLabel.moc"
