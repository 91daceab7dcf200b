// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

class QTextLayout;

/// A plain-text label that never cuts its text off: it wraps, between the words of compound names too, while all
/// lines fit its height, else it shows one line with an ellipsis and the whole text as tool tip.
class RowLabel : public QLabel
{
    Q_OBJECT

public:
    explicit RowLabel(QWidget *parent = nullptr);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    /// Breaks and places the lines; false when they do not fit.
    bool wrap(QTextLayout &lines) const;
    QString elidedText() const;
};
