// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

#include "Resources/Icons.h"
#include "ToolPage/SwitchButton.h"

class tst_SwitchButton : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void toggles()
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

    void showsTheImageOfItsState()
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

    void showsKeyboardFocus()
    {
        QWidget window;
        SwitchButton button(&window);
        button.resize(44, 20);
        window.show();
        QApplication::setActiveWindow(&window);
        QVERIFY(QTest::qWaitForWindowActive(&window));
        window.setAttribute(Qt::WA_KeyboardFocusChange, false);
        const QImage calm = button.grab().toImage();
        button.setFocus(Qt::TabFocusReason);
        window.setAttribute(Qt::WA_KeyboardFocusChange, true);
        QVERIFY(button.grab().toImage() != calm);
    }
};

QTEST_MAIN(tst_SwitchButton)
#include "tst_SwitchButton.moc"
