// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>

#include <QStringList>

#include "CuratedCamera.h"
#include "ParamterWidget/ParamterWidget.h"
#include "ToolPage/ToolPageWidgetItem.h"
#include "support/FakeHostCore.h"
#include "support/FatalMessages.h"

class QTabWidget;

/// The panel of a CuratedCamera named "cam", in English; the fake host starts anew with it.
class CuratedPanel
{
public:
    /// `prepare` is called before the panel opens.
    explicit CuratedPanel(const CuratedFeatures &changes = {}, PageSet pageSet = PageSet::AreaScan,
                          const std::function<void(CuratedPanel &)> &prepare = {});
    ~CuratedPanel();

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
    QTabWidget *innerTabs() const;

    FakeHostCore &host = FakeHostCore::instance();
    FatalMessages messages;
    CuratedCamera camera;
    std::unique_ptr<ParamterWidget> panel = std::make_unique<ParamterWidget>();
};
