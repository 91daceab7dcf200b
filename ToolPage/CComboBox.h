// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>
#include <QStringList>
#include <QVariant>

class CustomItemModel;
class QFrame;
class QKeyEvent;
class QListView;

/// A combo box whose list holds check boxes: a press on an entry, or Space, toggles it and leaves the list open. The
/// box shows the texts of the checked entries.
///
/// Row 0 of the model is a placeholder that is never shown and always stays the current item; the entries follow from
/// row 1 on. The list closes by Escape, Enter, Alt with an arrow key, F4, and a press beside it; with the box, and when
/// another window gets the focus. GUI thread only.
class CComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit CComboBox(QWidget *parent = nullptr);
    ~CComboBox() override;

    /// Appends an entry; getCheckedItemsName() returns its `userData` while it is checked.
    void addOption(const QString &text, bool checked, QVariant userData);
    /// Checks or unchecks the entry in the model row `row`, without a signal. Rows without an entry are ignored.
    void setItemChecked(int row, bool checked);
    /// The user data of the checked entries, in row order.
    QStringList getCheckedItemsName() const;
    /// The texts of the checked entries, joined in row order.
    QString displayText() const { return m_text; }

    /// Without entries there is no list to show.
    void showPopup() override;
    /// Ignored while the user works in the list: the toolkit asks for it when an entry is clicked.
    void hidePopup() override;
    void closeList();
    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// The user toggled an entry; the first one has the index 0.
    void itemCheckedStatusChanged(int index, bool checked);

public Q_SLOTS:
    /// Joins the texts of the checked entries anew. `row`, the entry that changed, makes no difference.
    void updateText(int row);
    /// Toggles an entry as the user does.
    void onListViewClicked(const QModelIndex &index);

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    /// Takes the event and does nothing.
    void wheelEvent(QWheelEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    int listWidth() const;
    void placeList();
    bool takeListKey(const QKeyEvent &event);
    bool takeListMouse(const QEvent &event);
    bool showFullText(const QEvent &event);
    QString shownText() const;

    QListView *m_view; ///< child
    CustomItemModel *m_model; ///< child
    QFrame *m_popup; ///< the toolkit's window around the list
    bool m_hideAllowed = true; ///< false: hidePopup() does nothing
    QString m_text; ///< the texts of the checked entries
    QMetaObject::Connection m_focusWatch; ///< closes the list when another window gets the focus
};
