// SPDX-License-Identifier: MIT
#include <QTest>

#include "PanelBase/StyleSheets.h"
#include "ToolPage/CustomButton.h"
#include "ToolPage/SelectedButton.h"

namespace {

/// A click of the mouse selects, and Space takes the selection back.
template <class Button>
void latches(Button &button, const QString &normal, const QString &selected)
{
    QCOMPARE(button.styleSheet(), normal);
    QTest::mouseClick(&button, Qt::LeftButton);
    QVERIFY(button.isSelected());
    QCOMPARE(button.styleSheet(), selected);
    QTest::keyClick(&button, Qt::Key_Space);
    QVERIFY(!button.isSelected());
    QCOMPARE(button.styleSheet(), normal);
}

} // namespace

/// The latching buttons, CustomButton and SelectedButton.
class tst_CustomButton : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsItsImages()
    {
        CustomButton button(QStringLiteral(":/n.png"), QStringLiteral(":/s.png"), QStringLiteral(":/d.png"));
        const QString style = QStringLiteral("QPushButton{border: none;image: url(:/%1.png);}QPushButton:hover{image: "
                                             "url(:/s.png);}QPushButton:disabled{image: url(:/d.png);}");
        latches(button, style.arg(QLatin1String("n")), style.arg(QLatin1String("s")));
    }

    void selectedButtonLatches()
    {
        SelectedButton button;
        latches(button, StyleSheets::PlainButton, StyleSheets::SelectedButton);
    }
};

QTEST_MAIN(tst_CustomButton)
#include "tst_CustomButton.moc"
