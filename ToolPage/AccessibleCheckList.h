// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessibleWidget>

class CComboBox;

/// Tells assistive technology what is checked in a CComboBox, whose current item is always the empty placeholder.
class AccessibleCheckList : public QAccessibleWidget
{
public:
    /// From now on every CComboBox is presented by this. Doing it again changes nothing.
    static void install();

    explicit AccessibleCheckList(CComboBox *box);

    QString text(QAccessible::Text kind) const override;
    QAccessible::State state() const override;
    int childCount() const override { return 1; }
    /// The list.
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QStringList actionNames() const override;
    /// Pressing the box, or showing its menu, opens and closes the list.
    void doAction(const QString &name) override;

private:
    CComboBox *m_box;
};
