// SPDX-License-Identifier: MIT
#include <QHelpEvent>

#include "DataRows.h"
#include "ToolPage/RowLabel.h"

namespace {

struct Place
{
    const char *name;
    const char *text;
    double widthShare;
    int lines;
    bool isHidden;
    const char *font = nullptr;
};

} // namespace

Q_DECLARE_METATYPE(Place)

class tst_RowLabel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void toolTipTellsWhatIsHidden_data()
    {
        const char *const phrase = "Acquisition Frame Rate";
        addDataRows<Place>({{"fits on one line", phrase, 1.1, 1, false},
                            {"fits on two lines", phrase, 0.9, 2, false},
                            {"one line is too short", phrase, 0.8, 1, true},
                            {"two lines are too short", phrase, 0.3, 2, true},
                            // Its lines are half as tall again as its size.
                            {"two lines of a tall font", phrase, 0.9, 2, false, "Noto Sans CJK SC"},
                            {"breaks compound names", "AcquisitionFrameRateEnable", 0.65, 2, false}});
    }
    void toolTipTellsWhatIsHidden()
    {
        QFETCH(Place, row);
        RowLabel label;
        label.setText(QLatin1String(row.text));
        const int lineHeight = label.fontMetrics().height();
        if (row.font)
            label.setFont(QFont(QLatin1String(row.font), label.font().pointSize()));
        label.resize(int(label.fontMetrics().horizontalAdvance(label.text()) * row.widthShare), lineHeight * row.lines);
        QHelpEvent event(QEvent::ToolTip, QPoint(1, 1), QPoint(1, 1));
        QCoreApplication::sendEvent(&label, &event);
        QCOMPARE(label.toolTip(), row.isHidden ? label.text() : QString());
    }
};

QTEST_MAIN(tst_RowLabel)
#include "tst_RowLabel.moc"
