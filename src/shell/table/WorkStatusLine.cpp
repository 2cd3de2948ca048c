#include "shell/table/WorkStatusLine.h"

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

WorkStatusLine::WorkStatusLine(const Observable<WorkStatus>& status, QWidget* parent)
    : QWidget(parent)
    , m_status(status)
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
    m_updates->watch(status);
    render();
}

void WorkStatusLine::render()
{
    const WorkStatus& status = *m_status;
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
