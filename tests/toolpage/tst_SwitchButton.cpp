// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

#include "Resources/Icons.h"
#include "ToolPage/SwitchButton.h"

namespace {

constexpr QSize SwitchSize(44, 20);

/// What a switch of its natural size that shows the image looks like.
QImage withBackground(const QImage &image, const QColor &background)
{
    QImage picture(SwitchSize, QImage::Format_RGB32);
    picture.fill(background);
    QPainter(&picture).drawImage(0, 0, image);
    return picture;
}

} // namespace

class tst_SwitchButton : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void toggles();
    void settingEmitsNothing();
    void showsTheImageOfItsState_data();
    void showsTheImageOfItsState();
    void showsKeyboardFocus();
};

void tst_SwitchButton::toggles()
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
}

void tst_SwitchButton::settingEmitsNothing()
{
    SwitchButton button;
    QSignalSpy clicked(&button, &QPushButton::clicked);
    QSignalSpy toggled(&button, &QPushButton::toggled);
    button.setSwitch(true);
    QVERIFY(button.isOn());
    QCOMPARE(clicked.count() + toggled.count(), 0);
}

void tst_SwitchButton::showsTheImageOfItsState_data()
{
    QTest::addColumn<bool>("on");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QString>("image");
    QTest::newRow("on") << true << true << QString(Icons::SwitchOn);
    QTest::newRow("off") << false << true << QString(Icons::SwitchOff);
    QTest::newRow("on, disabled") << true << false << QString(Icons::SwitchOnDisabled);
    QTest::newRow("off, disabled") << false << false << QString(Icons::SwitchOffDisabled);
}

void tst_SwitchButton::showsTheImageOfItsState()
{
    QFETCH(bool, on);
    QFETCH(bool, enabled);
    QFETCH(QString, image);
    SwitchButton button;
    button.setSwitch(on);
    button.setEnabled(enabled);
    button.resize(SwitchSize);
    const QImage shown = button.grab().toImage().convertToFormat(QImage::Format_RGB32);
    QCOMPARE(shown, withBackground(QImage(image), button.palette().color(QPalette::Window)));
}

void tst_SwitchButton::showsKeyboardFocus()
{
    QWidget window;
    SwitchButton button(&window);
    button.resize(SwitchSize);
    window.show();
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));
    window.setAttribute(Qt::WA_KeyboardFocusChange, false);
    const QImage calm = button.grab().toImage();
    button.setFocus(Qt::TabFocusReason);
    window.setAttribute(Qt::WA_KeyboardFocusChange, true);
    QVERIFY(button.grab().toImage() != calm);
}

QTEST_MAIN(tst_SwitchButton)
#include "tst_SwitchButton.moc"
