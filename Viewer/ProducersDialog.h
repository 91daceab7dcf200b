// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

class HostContext;
class ProducerTable;
class QDialogButtonBox;
class QPlainTextEdit;
class QPushButton;

/// The GenTL producers that the host searches with: which there are, which are on, and what each of them sees or why it
/// is not used. Whatever is changed here is followed by a search.
class ProducersDialog : public QDialog
{
    Q_OBJECT

public:
    /// `context` must outlive this.
    ProducersDialog(HostContext &context, QWidget *parent);

    /// As if they were chosen after a click on "Add...".
    void add(const QStringList &files);

private:
    void layOut();
    QDialogButtonBox *buttons();
    QPushButton *addButton(QDialogButtonBox *box, const QString &text, void (ProducersDialog::*pressed)());
    void connectParts();
    void askForFiles();
    void removeCurrent();
    void checkCurrentAgain();
    void search();
    void showProducers();
    void showCurrent();

    HostContext &m_context;
    ProducerTable *m_table;
    QPlainTextEdit *m_details;
    QPushButton *m_remove = nullptr;
    QPushButton *m_checkAgain = nullptr;
    QPushButton *m_search = nullptr;
};
