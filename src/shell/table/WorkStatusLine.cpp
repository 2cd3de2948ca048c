#include "shell/table/WorkStatusLine.h"

#include "operations/PluginManagerViewModel.h"
#include "operations/WorkStatus.h"
#include "shell/toolkit/Announce.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/ElidedLabel.h"
#include "shell/toolkit/RelativeFont.h"
#include "shell/toolkit/TintedLabel.h"
#include "shell/toolkit/ViewUpdater.h"

#include <QHBoxLayout>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kIconSize = 12;

QColor warningColour(const QPalette& palette)
{
    return AppTheme::legible(AppTheme::orange(palette), palette);
}

} // namespace

WorkStatusLine::WorkStatusLine(const PluginManagerViewModel& viewModel, QWidget* parent)
    : QWidget(parent)
    , m_viewModel(viewModel)
    , m_text(new ElidedLabel({}, this))
    , m_updates(new ViewUpdater([this] { render(); }, this))
{
    setObjectName(u"workStatusLine"_s);
    auto* warning = new TintedLabel({}, &warningColour, this);
    warning->setIcon(u"exclamationmark.triangle.fill"_s, kIconSize);
    m_warning = warning;
    m_text->setObjectName(u"workStatusLabel"_s);
    setRelativeFont(m_text, AppTheme::kCaption);
    QSizePolicy keepsHeight = m_text->sizePolicy();
    keepsHeight.setRetainSizeWhenHidden(true);
    m_text->setSizePolicy(keepsHeight);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(AppTheme::kSpace1);
    row->addWidget(m_warning);
    row->addWidget(m_text, 1);
    m_updates->watch(viewModel.workStatus, viewModel.unsavedReason);
    render();
}

void WorkStatusLine::render()
{
    WorkStatus status = *m_viewModel.workStatus;
    if (status.state == WorkStatus::State::idle && !m_viewModel.unsavedReason->isEmpty())
        status = {WorkStatus::State::notice, *m_viewModel.unsavedReason};
    m_warning->setVisible(status.state == WorkStatus::State::notice);
    m_text->setVisible(!status.text.isEmpty());
    m_text->setForegroundRole(status.isBusy() ? QPalette::PlaceholderText : QPalette::WindowText);
    if (m_text->text() == status.text)
        return;
    m_text->setText(status.text);
    if (m_text->isVisible())
        announce(m_text, status.text);
}

} // namespace orvanlite
