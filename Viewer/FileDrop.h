// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

class QWidget;

/// Takes a file that somebody drags into a window.
class FileDrop : public QObject
{
    Q_OBJECT

public:
    /// Owned by the window.
    explicit FileDrop(QWidget *window);

Q_SIGNALS:
    void dropped(const QString &path);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
