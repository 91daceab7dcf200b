// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>

#include <QByteArray>
#include <QList>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QVariant>
#include <QVector>

#include <GenApi/GenApi.h>

#include "PanelBase/DeviceReading.h"

struct VisibilityPass;

/// One row of the feature tree: a category or a feature. Column 0 is the name, column 1 the value.
///
/// The only place where the tree reads a feature for display, writes it and decides whether its row is shown.
/// No operation lets an exception out. GUI thread only.
class TreeItem
{
public:
    explicit TreeItem(const QVector<QVariant> &data, TreeItem *parent = nullptr);
    ~TreeItem();
    TreeItem(const TreeItem &) = delete;
    TreeItem &operator=(const TreeItem &) = delete;

    /// Null when there is no such child.
    TreeItem *child(int number);
    int childCount() const { return m_childItems.size(); }
    int columnCount() const { return m_itemData.size(); }
    /// The row under the parent; 0 without parent, -1 if the parent does not list this item.
    int childNumber() const;
    TreeItem *parent() { return m_parentItem; }
    const TreeItem *parent() const { return m_parentItem; }

    /// Appends a child with these cells; this item owns it.
    TreeItem *appendChild(const QVector<QVariant> &data);
    /// Inserts children with `columns` empty cells each. False if `position` is outside the children.
    bool insertChildren(int position, int count, int columns);
    /// Inserts empty cells here and in every descendant. False if `position` is outside the cells.
    bool insertColumns(int position, int columns);
    /// False, and nothing changes, if the range is not inside the children.
    bool removeChildren(int position, int count);
    /// Removes cells here and in every descendant. False if the range is not inside the cells.
    bool removeColumns(int position, int columns);

    /// How the device of the whole tree is read, to be set at the header item; null: at once, however long it takes.
    void setReading(DeviceReading *reading) { wholeTree().reading = reading; }
    DeviceReading *reading() const;

    /// Column 1 of a bound item is read from the node and remembered in the cell: a number, or text for people
    /// (addresses, "True", "{Execute}"). "{Not Available}" when the node is not readable, the last value seen when
    /// reading fails otherwise, and of a device that does not answer. Every other cell is returned as stored.
    QVariant data(int column);
    /// The cell as stored, without touching the node; invalid outside the cells.
    QVariant storedData(int column) const { return m_itemData.value(column); }
    /// Column 1 of a bound item goes to the node: written, 50 ms for the device to settle, then read back from the
    /// device into the cell. A refused write puts the old value back into the cell and is logged with its reason. True
    /// unless the column does not exist or the value is invalid.
    bool setData(int column, const QVariant &value);

    /// What the value cell showed when the row was read last, and whether it could be edited then.
    struct Cell
    {
        QVariant value;
        bool isEditable = false;
    };
    /// Before that, the first value, and not editable.
    Cell cell() const;
    void setCell(const Cell &cell);
    bool hasCell() const { return m_hasCell; }
    /// Whether the value has still to be read for the first time.
    bool isUnread() const { return m_isUnread; }
    /// For the time after setUnread(): reads the first value into the cell of column 1, if that was not done meanwhile.
    void readFirst();
    void setUnread() { m_isUnread = true; }

    /// Null for a row that stands for no node. Owned by the node map.
    GenApi::INode *GetFeaturePtr() const;
    void SetFeature(const GenApi::CPointer<GenApi::INode> &node);
    /// The node's property "Interface"; false, and `interfaceName` unchanged, if it has none.
    bool EnterEditMode(QString &interfaceName);

    /// Whether the row is shown at the visibility level (0 Beginner, 1 Expert, 2 Guru) with the name filter: level
    /// and name must fit and the feature must not be switched off by its pIsAvailable node, which is read from the
    /// device. A row that is switched by a node that the map does not have is shown.
    bool getVisiable(const int &level, const QString &filter);
    /// The same as part of a pass over many rows, which reads each availability node once.
    bool getVisiable(VisibilityPass &pass);
    /// Reads an availability node for a pass.
    void readSwitch(GenApi::INode *node, VisibilityPass &pass);

    /// Whether this is the first time that the tree sees this fault, so that it is logged once and not at each repaint.
    bool isNewFault(const char *message);

private:
    /// What all rows share, kept by the header item.
    struct WholeTree
    {
        QSet<QByteArray> reportedFaults;
        QPointer<DeviceReading> reading;
    };

    const TreeItem *top() const;
    WholeTree &wholeTree();
    bool isSwitchedOn(VisibilityPass &pass);
    void read(const std::function<void()> &access);
    GenApi::INode *availabilityNode();
    void write(int column, const QVariant &value, QVariant &old);
    void logNewFault(const char *message);

    // There are thousands of rows: what few of them need is not kept in each.
    QList<TreeItem *> m_childItems; ///< owned
    QVector<QVariant> m_itemData;
    TreeItem *m_parentItem; ///< null for the header item
    GenApi::CPointer<GenApi::INode> m_feature; ///< owned by the node map
    QString m_featureName;
    GenApi::INode *m_availability = nullptr; ///< what pIsAvailable names, once looked up; owned by the node map
    QVariant (*m_format)(const QVariant &value) = nullptr; ///< how the first value is shown
    std::unique_ptr<WholeTree> m_wholeTree; ///< null for all but the header item
    QVariant m_cellValue;
    bool m_hasCell = false;
    bool m_isCellEditable = false;
    bool m_isUnread = false;
    bool m_isAvailabilityKnown = false; ///< it was looked up
};
