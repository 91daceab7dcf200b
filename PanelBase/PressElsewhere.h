// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <QObject>

class QWidget;

/// A widget that derives from this, too, is the panel that the editors in it belong to.
struct EditScope
{
    virtual ~EditScope() = default;
};

/// Calls `onPress` when the mouse is pressed elsewhere in the panel of an enabled editor, on whatever is there, before
/// the press takes effect. Without an EditScope around it the editor belongs to its window. If `onPress` hides or
/// disables the widget that was pressed, the press is dropped.
class PressElsewhere : public QObject
{
public:
    /// `editor` must live as long as this object.
    PressElsewhere(QWidget *editor, std::function<void()> onPress, QObject *parent = nullptr);

    /// Presses are watched from now on.
    void start();
    void stop();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool isElsewhere(const QWidget *pressed, const QPoint &position) const;

    QWidget *m_editor;
    std::function<void()> m_onPress;
};
