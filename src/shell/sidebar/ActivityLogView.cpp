#include "shell/sidebar/ActivityLogView.h"

#include "records/ActivityLogManager.h"
#include "shell/sidebar/ActivityLogList.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Dialogs.h"
#include "shell/toolkit/Presence.h"
#include "shell/toolkit/PressButton.h"
#include "shell/toolkit/RelativeFont.h"
#include "shell/toolkit/TintedLabel.h"
#include "shell/toolkit/ViewUpdater.h"

#include <QHBoxLayout>
#include <QLabel>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kGreatestHeight = 280;
constexpr int kEmptyIconSize = 22;

} // namespace

ActivityLogView::ActivityLogView(ActivityLogManager& log, const platform::Clock& clock, QWidget* parent)
    : QWidget(parent)
    , m_log(log)
    , m_clear(new PressButton(u"Clear"_s, {}, PressButton::Ground::none, this))
    , m_empty(makeEmptyState())
    , m_list(new ActivityLogList(clock, this))
    , m_updates(new ViewUpdater([this] { render(); }, this))
{
    setObjectName(u"activityLogView"_s);
    setMaximumHeight(kGreatestHeight);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    auto* title = new QLabel(u"Recent Activity"_s, this);
    title->setObjectName(u"activityLogTitle"_s);
    setRelativeFont(title, 1, QFont::DemiBold);
    title->setWordWrap(true);
    m_clear->setObjectName(u"clearActivityButton"_s);
    m_clear->setAccessibleDescription(u"Clear activity log"_s);
    m_clear->setTextColour(&AppTheme::textSecondary);

    auto* header = new QHBoxLayout;
    header->setContentsMargins(AppTheme::kSpace2, 0, 0, 0);
    header->setSpacing(AppTheme::kSpace2);
    header->addWidget(title, 1);
    header->addWidget(m_clear);
    // Keep the height of the header when the button is hidden.
    const auto fit = [this, title] { title->setMinimumHeight(m_clear->sizeHint().height()); };
    fit();
    onFontChange(title, fit);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(AppTheme::kSpace1);
    column->addLayout(header);
    column->addWidget(m_empty);
    column->addWidget(m_list);

    connect(m_clear, &QAbstractButton::clicked, this, &ActivityLogView::confirmClear);
    m_updates->watch(log.entries);
    render();
}

QWidget* ActivityLogView::makeEmptyState()
{
    auto* empty = new QWidget(this);
    auto* icon = new TintedLabel({}, &AppTheme::textSecondary, empty);
    icon->setIcon(u"clock"_s, kEmptyIconSize);
    auto* text = new TintedLabel(u"No activity yet"_s, &AppTheme::textSecondary, empty);
    text->setObjectName(u"noActivityLabel"_s);
    text->setAlignment(Qt::AlignHCenter);
    text->setWordWrap(true);
    auto* column = new QVBoxLayout(empty);
    column->setContentsMargins(AppTheme::kSpace2, AppTheme::kSpace2, AppTheme::kSpace2, AppTheme::kSpace3);
    column->setSpacing(AppTheme::kSpace1);
    column->addWidget(icon, 0, Qt::AlignHCenter);
    column->addWidget(text);
    return empty;
}

void ActivityLogView::confirmClear()
{
    Question question;
    question.objectName = u"clearActivityDialog"_s;
    question.title = u"Clear activity log?"_s;
    question.action = u"Clear Log"_s;
    question.isDestructive = true;
    ask(this, question, [this] { m_log.clear(); });
}

void ActivityLogView::render()
{
    const auto& entries = *m_log.entries;
    present(m_clear, !entries.empty(), m_focusHeir);
    m_empty->setVisible(entries.empty());
    present(m_list, !entries.empty(), m_focusHeir);
    m_list->setEntries(entries);
}

} // namespace orvanlite
