// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <QApplication>

#include "FeatureTree/FeatureTreeView.h"
#include "FeatureTree/TreeModel.h"
#include "FindRow.h"
#include "TestCamera.h"
#include "support/FakeHostCore.h"
#include "support/FatalMessages.h"

class QPushButton;

/// The tree of a TestCamera in the active window, unfolded, with the level Beginner; unexpected warnings fail the test.
class ShownTree
{
protected:
    void open();
    void close();

    QModelIndex cell(const char *name, int column = 1) const { return findRow(*m_model, name, column); }
    bool isShown(const char *name) const;
    void click(const char *name, int column = 1);
    /// What has the focus, if it is of this kind.
    template <class Editor>
    Editor *editor() const
    {
        return qobject_cast<Editor *>(QApplication::focusWidget());
    }
    QPushButton *openCommand(const char *name);

    std::unique_ptr<FatalMessages> m_messages;
    std::unique_ptr<TestCamera> m_camera;
    std::unique_ptr<TreeModel> m_model;
    std::unique_ptr<FeatureTreeView> m_view;
};
