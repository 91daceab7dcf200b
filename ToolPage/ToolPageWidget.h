// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QPointer>
#include <QWidget>

class QVBoxLayout;
class ToolPageWidgetItem;

/// A vertical list of editor rows. After one of them has written its feature all of them read theirs
/// again, since features of a group often depend on each other. Other widgets may stand among the rows, all of which
/// are its items.
class ToolPageWidget : public QWidget
{
    Q_OBJECT

public:
    explicit ToolPageWidget(QWidget *parent = nullptr);

    /// Appends the widget, which becomes a child.
    void addWidget(QWidget *widget);
    /// Refreshes every row from its feature.
    void updateWidget();
    /// Language index: 0 English, any other value Chinese.
    void setLanguage(int language);
    /// Whether all of its items, at least one, are hidden; never while its title stays.
    bool isEmpty() const { return m_isEmpty; }
    /// Whether the group counts as one with rows also while it shows none. To be set before items are added.
    void setTitleStays(bool stays) { m_titleStays = stays; }

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// The first item shows, or the last one was hidden.
    void emptyChanged(bool isEmpty);

protected:
    /// Refreshes the hidden rows: their features may have become available meanwhile.
    void showEvent(QShowEvent *event) override;

private:
    QList<ToolPageWidgetItem *> rows() const;
    void adoptVisibility();

    QVBoxLayout *m_layout = nullptr;
    QList<QPointer<QWidget>> m_items; ///< children, in insertion order
    bool m_titleStays = false;
    bool m_isEmpty = false;
};
