// SPDX-License-Identifier: MIT
#include "Viewer/WalkDialog.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int EventInterval = 20; ///< ms
constexpr int SoonOver = 300; ///< ms
constexpr int Letters = 50; ///< of its width

} // namespace

WalkDialog::WalkDialog(const QString &title, QWidget *parent)
    : QDialog(parent), m_phase(new QLabel), m_bar(new QProgressBar)
{
    setObjectName(QStringLiteral("walkDialog"));
    setWindowTitle(title);
    setWindowModality(Qt::WindowModal);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setMinimumWidth(Letters * fontMetrics().averageCharWidth());
    m_phase->setTextFormat(Qt::PlainText);
    auto *buttons = new QDialogButtonBox;
    buttons->addButton(tr("&Cancel"), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::rejected, this, &WalkDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_phase);
    layout->addWidget(m_bar);
    layout->addWidget(buttons);
    m_bar->setRange(0, 0);
    m_sinceBegin.start();
    m_sinceEvents.start();
}

bool WalkDialog::goOn(const QString &phase, std::size_t done, std::size_t total)
{
    if (m_sinceEvents.elapsed() < EventInterval)
        return !m_isCancelled;
    m_phase->setText(total > 0 ? phase : tr("%1 (%2)").arg(phase).arg(done));
    m_bar->setRange(0, int(total));
    m_bar->setValue(int(done));
    if (!isVisible() && m_sinceBegin.elapsed() >= SoonOver)
        show();
    m_hasLetEventsHappen = true;
    QCoreApplication::processEvents(isVisible() ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
    m_sinceEvents.restart();
    return !m_isCancelled;
}

void WalkDialog::reject()
{
    m_isCancelled = true; // the walk closes it
}
