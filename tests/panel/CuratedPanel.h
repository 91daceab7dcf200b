// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QPushButton>
#include <QTabWidget>
#include <QtTest>

#include "CuratedCamera.h"
#include "ParamterWidget/ParamterWidget.h"
#include "ToolPage/SwitchButton.h"
#include "ToolPage/ToolPageWidgetItem.h"
#include "support/FakeHostCore.h"
#include "support/FatalMessages.h"
#include "support/Rows.h"

/// The titles, from left to right.
QStringList tabTexts(const QTabWidget *tabs);

/// The panel of a CuratedCamera named "cam", in English; the fake host starts anew with it.
class CuratedPanel
{
public:
    /// `prepare` is called before the panel opens.
    explicit CuratedPanel(const CuratedFeatures &changes = {}, PageSet pageSet = PageSet::AreaScan,
                          const std::function<void(CuratedPanel &)> &prepare = {});

    /// Null without a row of that (English) label.
    ToolPageWidgetItem *row(const char *label) const;
    /// The row's editor.
    template <class Widget>
    Widget *editor(const char *label) const
    {
        ToolPageWidgetItem *const owner = row(label);
        return owner ? owner->findChild<Widget *>() : nullptr;
    }
    /// Labels of the rows that are not hidden, in reading order; of those in one tool box if it is named.
    QStringList labels(const char *toolBox = nullptr) const;
    /// Titles of all groups, in reading order.
    QStringList groups() const;
    QTabWidget *innerTabs() const { return panel->findChild<QTabWidget *>("tabWidget"_s); }
    QTabWidget *mainTabs() const { return panel->findChild<QTabWidget *>("tabMainWidget"_s); }
    QStringList innerTitles() const { return tabTexts(innerTabs()); }
    /// Changes the device, which the node map has yet to find out.
    void poke(const char *feature, uint64_t value);

    FakeHostCore &host = FakeHostCore::instance();
    FatalMessages messages;
    CuratedCamera camera;
    std::unique_ptr<ParamterWidget> panel = std::make_unique<ParamterWidget>();
};

/// Tests of a curated panel, which they open.
class PanelFixture : public QObject
{
protected:
    ParamterWidget *panel() const { return m_panel->panel.get(); }
    MemoryPort &port() const { return m_panel->camera.port; }
    template <class Widget>
    Widget *editor(const char *row) const
    {
        return m_panel->editor<Widget>(row);
    }
    QPushButton *button(const char *row) const { return editor<QPushButton>(row); }
    void click(const char *row) const { button(row)->click(); }
    void choose(const char *row, int entry) const { editor<QComboBox>(row)->setCurrentIndex(entry); }
    /// Of the fields of integers.
    int number(const char *row) const { return editor<QSpinBox>(row)->value(); }
    bool isHidden(const char *row) const { return m_panel->row(row)->isHidden(); }
    /// The calls to functions of the host, whose names a blank separates.
    QStringList calls(const char *functions) const { return m_panel->host.callsTo(words(functions)); }
    /// What the panel has logged.
    QStringList told() const { return calls("VLogInfo"); }
    /// To the attribute tab and back, where features may have been edited.
    void visitTree() const
    {
        m_panel->mainTabs()->setCurrentIndex(1);
        m_panel->mainTabs()->setCurrentIndex(0);
    }

    std::unique_ptr<CuratedPanel> m_panel;
};
