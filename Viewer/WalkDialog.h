// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QElapsedTimer>

class QLabel;
class QProgressBar;

/// How far a walk through the settings of a device is, with Cancel. It lets events happen between the steps of the
/// walk and keeps the user away from the windows behind meanwhile. A walk that is over soon does not show it.
class WalkDialog : public QDialog
{
    Q_OBJECT

public:
    explicit WalkDialog(const QString &title, QWidget *parent);

    /// After each step. False when the user has cancelled. Without a total the end is unknown.
    bool goOn(const QString &phase, std::size_t done, std::size_t total);
    bool isCancelled() const { return m_isCancelled; }
    /// Others may have seen the device in the middle of the walk.
    bool hasLetEventsHappen() const { return m_hasLetEventsHappen; }

    void reject() override;

private:
    QLabel *m_phase;
    QProgressBar *m_bar;
    QElapsedTimer m_sinceBegin;
    QElapsedTimer m_sinceEvents;
    bool m_isCancelled = false;
    bool m_hasLetEventsHappen = false;
};
