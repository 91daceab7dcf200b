// SPDX-License-Identifier: MIT
#pragma once

class QPushButton;
class QWidget;
struct PanelContext;

/// Loads the camera's settings from the user set that is selected. GUI thread only.
class UserSets
{
public:
    /// The button becomes a child of `controlsParent`, until a page places it.
    UserSets(PanelContext &context, QWidget *controlsParent);

    QPushButton *loadButton() const { return m_loadButton; }
    /// Executes "UserSetLoad", then reads the pages again.
    void load();
    /// The camera's settings must not be exchanged while it acquires.
    void lock() { setLoadable(false); }
    void unlock() { setLoadable(true); }

private:
    void setLoadable(bool loadable);

    PanelContext &m_context;
    QPushButton *m_loadButton;
};
