// SPDX-License-Identifier: MIT
#include "Viewer/ProducersDialog.h"

#include <algorithm>

#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "Host/HostContext.h"
#include "Viewer/ProducerTable.h"

namespace {

const QString FolderKey = QStringLiteral("Viewer/producerFolder");
constexpr QSize Letters(110, 24); ///< of the dialog: letters in a line, lines
constexpr double MostOfWindow = 0.95;
constexpr int DetailLines = 8;

} // namespace

ProducersDialog::ProducersDialog(HostContext &context, QWidget *parent)
    : QDialog(parent), m_context(context), m_table(new ProducerTable), m_details(new QPlainTextEdit)
{
    setObjectName(QStringLiteral("producersDialog"));
    setWindowModality(Qt::WindowModal);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setWindowTitle(tr("GenTL Producers"));
    layOut();
    connectParts();
    showProducers();
    const QSize wanted(Letters.width() * fontMetrics().averageCharWidth(),
                       Letters.height() * fontMetrics().lineSpacing());
    resize(parent ? wanted.boundedTo(parent->window()->size() * MostOfWindow) : wanted);
    m_table->setFocus();
}

void ProducersDialog::layOut()
{
    auto *hint = new QLabel(tr("A producer is a file (*.cti) that comes with the driver of a camera or frame grabber. "
                               "The viewer searches with those that are ticked."));
    hint->setWordWrap(true);
    m_details->setObjectName(QStringLiteral("producerDetails"));
    m_details->setAccessibleName(tr("What the selected producer sees"));
    m_details->setReadOnly(true);
    m_details->setTabChangesFocus(true);
    m_details->setFixedHeight(DetailLines * fontMetrics().lineSpacing() + 4 * m_details->frameWidth());
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(hint);
    layout->addWidget(m_table, 1);
    layout->addWidget(m_details);
    layout->addWidget(buttons());
}

QDialogButtonBox *ProducersDialog::buttons()
{
    auto *box = new QDialogButtonBox;
    addButton(box, tr("&Add..."), &ProducersDialog::askForFiles)->setObjectName(QStringLiteral("addProducer"));
    m_remove = addButton(box, tr("&Remove"), &ProducersDialog::removeCurrent);
    m_remove->setObjectName(QStringLiteral("removeProducer"));
    m_remove->setToolTip(tr("Only producers that were added here can be removed; others are switched off."));
    m_checkAgain = addButton(box, tr("Chec&k Again"), &ProducersDialog::checkCurrentAgain);
    m_checkAgain->setObjectName(QStringLiteral("checkProducerAgain"));
    m_checkAgain->setToolTip(tr("Try the file again, although it is known"));
    m_search = addButton(box, tr("&Search Now"), &ProducersDialog::search);
    m_search->setObjectName(QStringLiteral("searchProducers"));
    box->addButton(tr("&Close"), QDialogButtonBox::RejectRole)->setAutoDefault(false);
    connect(box, &QDialogButtonBox::rejected, this, &ProducersDialog::reject);
    return box;
}

QPushButton *ProducersDialog::addButton(QDialogButtonBox *box, const QString &text, void (ProducersDialog::*pressed)())
{
    QPushButton *const button = box->addButton(text, QDialogButtonBox::ActionRole);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, pressed);
    return button;
}

void ProducersDialog::connectParts()
{
    connect(m_table, &ProducerTable::producerChanged, this, &ProducersDialog::showCurrent);
    connect(m_table, &ProducerTable::switched, this, [this](const QString &file, bool on) {
        m_context.producers().setOn(file, on);
        search();
    });
    connect(&m_context.producers(), &Producers::changed, this, &ProducersDialog::showProducers);
    connect(&m_context.devices(), &KnownDevices::refreshingChanged, this, &ProducersDialog::showProducers);
    connect(&m_context.devices(), &KnownDevices::searched, this, &ProducersDialog::showProducers);
}

void ProducersDialog::askForFiles()
{
    const QString folder = m_context.settings().value(FolderKey, QDir::homePath()).toString();
    auto *dialog = new QFileDialog(this, tr("Add Producers"), folder, tr("GenTL producers (*.cti);;All files (*)"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFiles);
    connect(dialog, &QFileDialog::filesSelected, this, &ProducersDialog::add);
    dialog->open();
}

void ProducersDialog::add(const QStringList &files)
{
    for (const QString &file : files) {
        m_context.producers().add(file);
        m_context.settings().setValue(FolderKey, QFileInfo(file).absolutePath());
    }
    search();
}

void ProducersDialog::removeCurrent()
{
    m_context.producers().remove(m_table->current()->file.path);
    search();
}

void ProducersDialog::checkCurrentAgain()
{
    m_context.producers().checkAgain(m_table->current()->file.path);
    search();
}

void ProducersDialog::search()
{
    m_context.devices().refreshAnew();
}

void ProducersDialog::showProducers()
{
    const QList<Producers::File> files = m_context.producers().files();
    const std::vector<ProducerReport> reports = m_context.producers().reports();
    QList<KnownProducer> all;
    for (const Producers::File &file : files) {
        KnownProducer producer{file};
        const auto report = std::find_if(reports.begin(), reports.end(),
                                         [&file](const ProducerReport &one) { return one.file == file.path; });
        if (report != reports.end() && file.isOn)
            producer.report = *report;
        producer.isSearching = m_context.devices().isRefreshing();
        all << producer;
    }
    m_table->setProducers(all);
    m_search->setEnabled(!m_context.devices().isRefreshing());
}

void ProducersDialog::showCurrent()
{
    const KnownProducer *const current = m_table->current();
    const QString text = current ? ProducerWords::details(*current)
                                 : tr("There is no producer yet: add the file that came with your hardware, or name "
                                      "its directory in the environment variable GENICAM_GENTL64_PATH.");
    if (m_details->toPlainText() != text)
        m_details->setPlainText(text);
    m_remove->setEnabled(current && current->file.origin == Producers::Origin::Settings);
    m_checkAgain->setEnabled(current && current->file.isOn);
}
