// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QTreeWidget>

class Device;
class HostContext;

/// The devices that the host knows, grouped by how they are reached, each with its state.
///
/// The focus of the host follows the current row; a group's title takes the focus away from all devices. Escape gives
/// up the current device while it is being opened.
class DeviceTree : public QTreeWidget
{
    Q_OBJECT

public:
    enum class State { Closed, Opening, Open, Acquiring, Lost };
    Q_ENUM(State)

    /// `context` must outlive the tree.
    explicit DeviceTree(HostContext &context, QWidget *parent = nullptr);

    State state(const QString &id) const;
    /// The device of the current row; null on a group's title and without a row.
    Device *currentDevice() const;
    /// Makes the device's row the current one; false when it has none.
    bool select(const QString &id);

Q_SIGNALS:
    /// The state of a device, or why it has that state, changed.
    void stateChanged(const QString &id);
    /// The next sensible step is wanted for the current device: double click or Enter on its row.
    void stepRequested();

protected:
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    void rebuild();
    QString otherWayTo(const QString &id) const;
    void addRow(Device *device);
    void adoptState(const QString &id);
    void announceCurrent();
    int rowOfGroup(int group) const;
    QTreeWidgetItem *groupItem(int group);
    QTreeWidgetItem *itemOf(const QString &id) const;
    void updateItem(const QString &id);
    QString stateText(const QString &id) const;
    QString toolTipOf(const Device &device) const;
    void retranslate();

    HostContext &m_context;
    QHash<QString, QTreeWidgetItem *> m_items; ///< by device id
    QHash<int, QTreeWidgetItem *> m_groups; ///< by row of the group table
};
