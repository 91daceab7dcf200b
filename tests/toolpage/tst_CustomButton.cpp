// SPDX-License-Identifier: MIT
#include <QTest>

#include "PanelBase/StyleSheets.h"
#include "ToolPage/CustomButton.h"
#include "ToolPage/SelectedButton.h"

namespace {

QString style(const char *atRest)
{
    return QStringLiteral("QPushButton{border: none;image: url(%1);}QPushButton:hover{image: url(:/s.png);}"
                          "QPushButton:disabled{image: url(:/d.png);}")
        .arg(QLatin1String(atRest));
}

} // namespace

/// The latching buttons, CustomButton and SelectedButton.
class tst_CustomButton : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsItsImages();
    void selectedButtonLatches();
};

void tst_CustomButton::showsItsImages()
{
    CustomButton button(QStringLiteral(":/n.png"), QStringLiteral(":/s.png"), QStringLiteral(":/d.png"));
    QCOMPARE(button.styleSheet(), style(":/n.png"));
    QTest::mouseClick(&button, Qt::LeftButton);
    QVERIFY(button.isSelected());
    QCOMPARE(button.styleSheet(), style(":/s.png"));
    QTest::keyClick(&button, Qt::Key_Space);
    QVERIFY(!button.isSelected());
    QCOMPARE(button.styleSheet(), style(":/n.png"));
}

void tst_CustomButton::selectedButtonLatches()
{
    SelectedButton button;
    QCOMPARE(button.styleSheet(), StyleSheets::PlainButton);
    QTest::mouseClick(&button, Qt::LeftButton);
    QVERIFY(button.isSelected());
    QCOMPARE(button.styleSheet(), StyleSheets::SelectedButton);
    QTest::keyClick(&button, Qt::Key_Space);
    QVERIFY(!button.isSelected());
    QCOMPARE(button.styleSheet(), StyleSheets::PlainButton);
}

QTEST_MAIN(tst_CustomButton)
#include "tst_CustomButton.moc"
