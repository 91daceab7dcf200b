// SPDX-License-Identifier: MIT
#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

#include "PanelBase/StyleSheets.h"
#include "Resources/Icons.h"
#include "ToolPage/CustomButton.h"
#include "ToolPage/SelectedButton.h"
#include "ToolPage/SwitchButton.h"

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

/// The latching buttons, CustomButton and SelectedButton, and the switch.
class tst_Buttons : public QObject
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

    void switchToggles()
    {
        SwitchButton button;
        QVERIFY(!button.isOn());
        QVector<bool> heard; // by whoever reads the switch in a slot of clicked()
        connect(&button, &QPushButton::clicked, this, [&] { heard << button.isOn(); });
        QTest::mouseClick(&button, Qt::LeftButton);
        QVERIFY(button.isOn() && button.isChecked());
        QTest::keyClick(&button, Qt::Key_Space);
        QVERIFY(!button.isOn() && !button.isChecked());
        QCOMPARE(heard, (QVector<bool>{true, false}));

        QSignalSpy toggled(&button, &QPushButton::toggled);
        button.setSwitch(true);
        QVERIFY(button.isOn());
        QCOMPARE(heard.size() + toggled.count(), 2);
    }

    void switchShowsTheImageOfItsState()
    {
        const std::tuple<bool, bool, QLatin1String> states[] = {{true, true, Icons::SwitchOn},
                                                                {false, true, Icons::SwitchOff},
                                                                {true, false, Icons::SwitchOnDisabled},
                                                                {false, false, Icons::SwitchOffDisabled}};
        for (const auto &[isOn, isEnabled, image] : states) {
            SwitchButton button;
            button.setSwitch(isOn);
            button.setEnabled(isEnabled);
            button.resize(44, 20);
            QImage expected(button.size(), QImage::Format_RGB32);
            expected.fill(button.palette().color(QPalette::Window));
            QPainter(&expected).drawImage(0, 0, QImage(image));
            const QImage shown = button.grab().toImage().convertToFormat(QImage::Format_RGB32);
            QVERIFY2(shown == expected, image.data());
        }
    }
};

QTEST_MAIN(tst_Buttons)
#include "tst_Buttons.moc"
