// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QVector>

class QFocusEvent;
class QKeyEvent;
class QPainter;
class QWidget;

/// The keyboard's way through the editor of a row: its place in the tab order, the mark of the focus, and Escape.
/// The wheel scrolls the page unless the editor has the focus. A row reads from top to bottom with the rows around it,
/// whenever its editor was made.
class EditorFocus : public QObject
{
    Q_OBJECT

public:
    /// `row`, the parent, is repainted when the focus comes or goes.
    explicit EditorFocus(QWidget *row);

    /// Watches an editor that the row has laid out and gives it the row's place in the tab order; the row itself, which
    /// Tab passes over, comes next.
    void watch(QWidget *editor);
    /// Ends the editor's turn; the row keeps the place, so that Tab goes on from there. An editor that is being stepped
    /// keeps the focus.
    void leave(QWidget *editor);
    /// The same for an editor that was disabled under the user's hands; false if none was.
    bool leaveDisabled();
    /// Frames the widget of the editor that has the focus, if any; for the row's paintEvent().
    void paint(QPainter &painter) const;

Q_SIGNALS:
    /// A widget of the editor got the focus, by whatever means.
    void gained();
    /// Escape was pressed in a number field with input, which shows what it was loaded with again.
    void editCancelled();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void arrange();
    void enter(const QFocusEvent &event);
    bool cancelEdit(QWidget *editor, QKeyEvent &event);

    QWidget *m_row;
    QVector<QWidget *> m_stops; ///< what Tab reaches inside the editor, in reading order
};
