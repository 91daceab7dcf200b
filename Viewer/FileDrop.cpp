// SPDX-License-Identifier: MIT
#include "Viewer/FileDrop.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

namespace {

/// Empty unless it is a single file of this machine.
QString fileOf(const QDropEvent &event)
{
    const QList<QUrl> urls = event.mimeData()->urls();
    return urls.size() == 1 ? urls.first().toLocalFile() : QString();
}

} // namespace

FileDrop::FileDrop(QWidget *window) : QObject(window)
{
    window->setAcceptDrops(true);
    window->installEventFilter(this);
}

bool FileDrop::eventFilter(QObject *, QEvent *event)
{
    if (event->type() != QEvent::DragEnter && event->type() != QEvent::Drop)
        return false;
    if (QApplication::activeModalWidget()) // a dialog waits for an answer, and keeps from the window but keys and mouse
        return false;
    auto *drop = static_cast<QDropEvent *>(event);
    const QString path = fileOf(*drop);
    if (path.isEmpty())
        return false;
    drop->acceptProposedAction();
    if (event->type() == QEvent::Drop) // after the answer to the program that the file comes from
        QMetaObject::invokeMethod(
            this, [this, path] { Q_EMIT dropped(path); }, Qt::QueuedConnection);
    return true;
}
