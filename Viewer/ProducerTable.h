// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QTreeWidget>

#include "Viewer/ProducerWords.h"

/// The producers that the host knows, one a row, to be switched on and off: by a click into the box, or by Space.
class ProducerTable : public QTreeWidget
{
    Q_OBJECT

public:
    enum Column { FileColumn, VendorColumn, VersionColumn, TransportColumn, OriginColumn, StateColumn };

    explicit ProducerTable(QWidget *parent = nullptr);

    /// The current row stays that of its file.
    void setProducers(const QList<KnownProducer> &producers);
    /// Null without a current row.
    const KnownProducer *current() const;

Q_SIGNALS:
    void switched(const QString &file, bool on);
    /// Another row, or other words in it.
    void producerChanged();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void fitColumns();
    void fill(QTreeWidgetItem *item, const KnownProducer &producer);
    void adoptBox(QTreeWidgetItem *item);

    QList<KnownProducer> m_producers;
};
