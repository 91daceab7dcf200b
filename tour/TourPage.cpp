// SPDX-License-Identifier: MIT
#include "tour/TourPage.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QPushButton>
#include <QScrollArea>
#include <QTabBar>
#include <QTabWidget>

#include "tour/TourHand.h"
#include "tour/TourPanel.h"
#include "tour/TourVerdict.h"

namespace {

constexpr int CommonTab = 0;
constexpr int ScrollTime = 50; // ms

} // namespace

bool TourPage::open(int number)
{
    const auto *pages = m_panel.part<QTabWidget>("tabWidget");
    if (!pages || !m_panel.openTab(CommonTab) || number >= pages->count())
        return false;
    TourHand::click(pages->tabBar(), pages->tabBar()->tabRect(number).center());
    return pages->currentIndex() == number;
}

QWidget *TourPage::row(const QString &label)
{
    QWidget *found = m_panel.widget() ? m_panel.widget()->findChild<QWidget *>(label) : nullptr;
    if (!found || !found->isVisible())
        return nullptr;
    for (QWidget *outer = found->parentWidget(); outer; outer = outer->parentWidget()) {
        if (auto *area = qobject_cast<QScrollArea *>(outer))
            area->ensureWidgetVisible(found);
    }
    TourHand::pause(ScrollTime);
    return found;
}

bool TourPage::press(const QString &label)
{
    auto *button = control<QPushButton>(label);
    if (!m_verdict.expect(button && button->isEnabled(), QStringLiteral("%1 cannot be pressed").arg(label)))
        return false;
    TourHand::click(button);
    return true;
}

bool TourPage::enter(const QString &label, const QString &number)
{
    auto *field = control<QAbstractSpinBox>(label);
    if (!m_verdict.expect(field && field->isEnabled(), QStringLiteral("%1 cannot be typed into").arg(label)))
        return false;
    TourHand::click(field, QPoint(field->width() / 3, field->height() / 2));
    TourHand::retype(field, number);
    TourHand::key(field, Qt::Key_Return);
    return true;
}

bool TourPage::choose(const QString &label, const QString &entry)
{
    auto *list = control<QComboBox>(label);
    const bool chosen = list && list->isEnabled() && TourHand::choose(list, entry);
    return m_verdict.expect(chosen, QStringLiteral("%1 does not offer %2").arg(label, entry));
}
