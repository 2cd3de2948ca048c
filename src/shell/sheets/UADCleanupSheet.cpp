#include "shell/sheets/UADCleanupSheet.h"

#include "operations/Detach.h"
#include "shell/sheets/UADPluginList.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/PressButton.h"
#include "shell/toolkit/RelativeFont.h"
#include "shell/toolkit/Spinner.h"
#include "shell/toolkit/TintedLabel.h"
#include "shell/toolkit/ViewUpdater.h"
#include "uad/UADCleanupManager.h"

#include <QHBoxLayout>
#include <QStackedWidget>

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize kSize(520, 500);
constexpr int kHeaderSign = 22;
constexpr int kStateSign = 44;
constexpr int kSpinnerSize = 28;

/// In the order of the pages.
enum State { working, complete, problem, empty, choosing };

QLabel* text(const QString& words, TintedLabel::Colour colour, const QString& objectName, QWidget* parent)
{
    auto* label = new TintedLabel(words, std::move(colour), parent);
    label->setObjectName(objectName);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignCenter);
    return label;
}

QLabel* sign(const QString& iconKey, int size, TintedLabel::Colour colour, QWidget* parent)
{
    auto* icon = new TintedLabel({}, std::move(colour), parent);
    icon->setIcon(iconKey, size);
    return icon;
}

/// Stacks the widgets vertically in the middle of a page.
void stackInMiddle(QWidget* page, const std::vector<QWidget*>& widgets)
{
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(2 * AppTheme::kSpace5, AppTheme::kSpace4, 2 * AppTheme::kSpace5,
                               AppTheme::kSpace5);
    column->setSpacing(AppTheme::kSpace3);
    column->addStretch(1);
    for (QWidget* widget : widgets) {
        const bool isText = qobject_cast<QLabel*>(widget) && static_cast<QLabel*>(widget)->wordWrap();
        column->addWidget(widget, 0, isText ? Qt::Alignment() : Qt::AlignHCenter);
    }
    column->addStretch(1);
}

} // namespace

UADCleanupSheet::UADCleanupSheet(UADCleanupManager& cleanup, QWidget* parent)
    : Sheet(parent)
    , m_cleanup(cleanup)
    , m_states(new QStackedWidget(this))
    , m_updates(new ViewUpdater([this] { render(); }, this))
{
    setObjectName(u"uadCleanupSheet"_s);
    setWindowTitle(u"UAD Demo Plugin Cleanup"_s);
    m_states->setAccessibleName(u"Clean-up"_s);
    setFixedSize(kSize);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeHeader());
    column->addWidget(m_states, 1);
    for (QWidget* page : {makeWorking(), makeComplete(), makeProblem(), makeEmpty(), makeChoosing()})
        m_states->addWidget(page);
    m_updates->watch(cleanup.isLoading, cleanup.cleanupComplete, cleanup.errorMessage, cleanup.demoPlugins,
                     cleanup.authorizedPlugins, cleanup.disabledCount);
    render();
}

QAbstractButton* UADCleanupSheet::mainButton() const
{
    switch (m_states->currentIndex()) {
    case complete:
        return m_done;
    case problem:
        return m_again;
    case empty:
        return m_close;
    case choosing:
        return m_disable;
    default:
        return nullptr;
    }
}

void UADCleanupSheet::reject()
{
    QDialog::reject();
    if (*m_cleanup.showCleanupSheet)
        m_cleanup.showCleanupSheet = false;
}

PressButton* UADCleanupSheet::makeButton(const QString& title, const QString& iconKey,
                                         const QString& objectName, QWidget* parent)
{
    auto* button = new PressButton(title, iconKey, PressButton::Ground::bordered, parent);
    button->setObjectName(objectName);
    return button;
}

QWidget* UADCleanupSheet::makeHeader()
{
    auto* header = new QWidget(this);
    auto* title = new QLabel(u"UAD Demo Plugin Cleanup"_s, header);
    title->setObjectName(u"uadCleanupTitle"_s);
    setRelativeFont(title, 1.15, QFont::DemiBold);
    m_close = makeIconButton(u"xmark.circle.fill"_s, u"Close"_s, u"closeCleanupButton"_s, header);
    connect(m_close, &QAbstractButton::clicked, this, &UADCleanupSheet::reject);
    auto* row = new QHBoxLayout(header);
    row->setContentsMargins(AppTheme::kSpace5, AppTheme::kSpace4, AppTheme::kSpace3, AppTheme::kSpace3);
    row->setSpacing(AppTheme::kSpace2);
    row->addWidget(
        sign(u"bolt.trianglebadge.exclamationmark.fill"_s, kHeaderSign, &AppTheme::orange, header));
    row->addWidget(title, 1);
    row->addWidget(m_close);
    return header;
}

QWidget* UADCleanupSheet::makeWorking()
{
    auto* page = new QWidget(this);
    stackInMiddle(page,
                  {new Spinner(kSpinnerSize, page), text(u"Analyzing UAD plugin authorizations..."_s,
                                                         &AppTheme::secondary, u"uadWorkingLabel"_s, page)});
    return page;
}

QWidget* UADCleanupSheet::makeComplete()
{
    auto* page = new QWidget(this);
    QLabel* title = text(u"Cleanup Complete!"_s, &AppTheme::primary, u"uadCompleteLabel"_s, page);
    setRelativeFont(title, 1.15, QFont::DemiBold);
    m_disabled = text({}, &AppTheme::primary, u"uadDisabledLabel"_s, page);
    m_done = makeButton(u"Done"_s, {}, u"cleanupDoneButton"_s, page);
    connect(m_done, &QAbstractButton::clicked, this, &UADCleanupSheet::reject);
    page->setFocusProxy(m_done);
    stackInMiddle(page, {sign(u"checkmark.circle.fill"_s, kStateSign, &AppTheme::green, page), title,
                         m_disabled, m_done});
    return page;
}

QWidget* UADCleanupSheet::makeProblem()
{
    auto* page = new QWidget(this);
    m_problem = text({}, &AppTheme::secondary, u"uadProblemLabel"_s, page);
    auto* buttons = new QWidget(page);
    m_again = makeButton(u"Try Again"_s, {}, u"cleanupTryAgainButton"_s, buttons);
    PressButton* cancel = makeButton(u"Cancel"_s, {}, u"cleanupProblemCancelButton"_s, buttons);
    page->setFocusProxy(m_again);
    connect(m_again, &QAbstractButton::clicked, this, [this] { m_cleanup.retryWithExistingProfile(); });
    connect(cancel, &QAbstractButton::clicked, this, &UADCleanupSheet::reject);
    auto* row = new QHBoxLayout(buttons);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(AppTheme::kSpace2);
    row->addWidget(m_again);
    row->addWidget(cancel);
    stackInMiddle(page, {sign(u"exclamationmark.triangle.fill"_s, kStateSign, &AppTheme::orange, page),
                         m_problem, buttons});
    return page;
}

QWidget* UADCleanupSheet::makeEmpty()
{
    auto* page = new QWidget(this);
    stackInMiddle(page, {text(u"No demo plugins found"_s, &AppTheme::secondary, u"uadEmptyLabel"_s, page)});
    return page;
}

QWidget* UADCleanupSheet::makeSelectionRow()
{
    auto* buttons = new QWidget(this);
    m_expiredOnly = makeButton(u"Expired Only"_s, u"clock.badge.xmark"_s, u"expiredOnlyButton"_s, buttons);
    m_expiredOnly->setTint(&AppTheme::red);
    PressButton* all = makeButton(u"All Demos"_s, u"checkmark.circle"_s, u"allDemosButton"_s, buttons);
    all->setTint(&AppTheme::orange);
    PressButton* none = makeButton(u"None"_s, {}, u"noDemosButton"_s, buttons);
    connect(m_expiredOnly, &QAbstractButton::clicked, this, [this] { m_cleanup.selectExpiredOnly(); });
    connect(all, &QAbstractButton::clicked, this, [this] { m_cleanup.selectAll(); });
    connect(none, &QAbstractButton::clicked, this, [this] { m_cleanup.deselectAll(); });
    m_selected = new TintedLabel({}, &AppTheme::secondary, buttons);
    m_selected->setObjectName(u"uadSelectedLabel"_s);
    auto* row = new QHBoxLayout(buttons);
    row->setContentsMargins(AppTheme::kSpace5, 0, AppTheme::kSpace5, AppTheme::kSpace2);
    row->setSpacing(AppTheme::kSpace2);
    row->addWidget(m_expiredOnly);
    row->addWidget(all);
    row->addWidget(none);
    row->addStretch(1);
    row->addWidget(m_selected);
    return buttons;
}

QWidget* UADCleanupSheet::makeFooter()
{
    auto* footer = new QWidget(this);
    m_counts = new TintedLabel({}, &AppTheme::secondary, footer);
    m_counts->setObjectName(u"uadCountsLabel"_s);
    PressButton* cancel = makeButton(u"Cancel"_s, {}, u"cleanupCancelButton"_s, footer);
    connect(cancel, &QAbstractButton::clicked, this, &UADCleanupSheet::reject);
    m_disable = makeButton({}, {}, u"disableDemosButton"_s, footer);
    m_disable->setTint(&AppTheme::red);
    connect(m_disable, &QAbstractButton::clicked, this,
            [this] { detach(m_cleanup.disableSelectedUADDemos()); });
    auto* row = new QHBoxLayout(footer);
    row->setContentsMargins(AppTheme::kSpace5, AppTheme::kSpace3, AppTheme::kSpace5, AppTheme::kSpace4);
    row->setSpacing(AppTheme::kSpace2);
    row->addWidget(m_counts);
    row->addStretch(1);
    row->addWidget(cancel);
    row->addWidget(m_disable);
    return footer;
}

QWidget* UADCleanupSheet::makeChoosing()
{
    auto* page = new QWidget(this);
    QWidget* selectionRow = makeSelectionRow(); // created before the list, for the tab order
    m_list = new UADPluginListModel(this);
    auto* list = new UADPluginList(*m_list, page);
    page->setFocusProxy(list);
    connect(list, &UADPluginList::toggled, this, [this](const QUuid& id) { m_cleanup.toggleSelection(id); });
    auto* inset = new QHBoxLayout;
    inset->setContentsMargins(AppTheme::kSpace2, 0, AppTheme::kSpace2, 0);
    inset->addWidget(list);
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(selectionRow);
    column->addLayout(inset, 1);
    column->addWidget(makeFooter());
    return page;
}

void UADCleanupSheet::render()
{
    const UADPluginAuths& demos = *m_cleanup.demoPlugins;
    const bool hasChoice = std::any_of(demos.begin(), demos.end(),
                                       [](const UADPluginAuth& each) { return !each.isAlreadyDisabled; });
    const State state = *m_cleanup.isLoading         ? working
                        : *m_cleanup.cleanupComplete ? complete
                        : *m_cleanup.errorMessage    ? problem
                        : hasChoice                  ? choosing
                                                     : empty;
    const int count = *m_cleanup.disabledCount;
    m_disabled->setText(u"%1 demo plugin%2 disabled"_s.arg(count).arg(count == 1 ? QString() : u"s"_s));
    m_problem->setText(m_cleanup.errorMessage->value_or(QString()));
    renderChoice();
    if (state == m_states->currentIndex())
        return;
    m_states->setCurrentIndex(state);
    // Screen readers announce the message with the focused button.
    if (state == complete)
        m_states->currentWidget()->focusProxy()->setAccessibleDescription(u"Cleanup Complete! "_s +
                                                                          m_disabled->text());
    else if (state == problem)
        m_states->currentWidget()->focusProxy()->setAccessibleDescription(m_problem->text());
    // The widget that had the focus is now hidden.
    if (QWidget* first = m_states->currentWidget()->focusProxy())
        first->setFocus(Qt::OtherFocusReason);
}

void UADCleanupSheet::renderChoice()
{
    const UADPluginAuths expired = m_cleanup.expiredPlugins();
    const bool hasExpired = std::any_of(expired.begin(), expired.end(),
                                        [](const UADPluginAuth& each) { return !each.isAlreadyDisabled; });
    const int selected = m_cleanup.selectedCount();
    m_expiredOnly->setVisible(hasExpired);
    m_selected->setText(u"%1 selected"_s.arg(selected));
    m_list->show(m_cleanup);
    m_counts->setText(u"%1 authorized · %2 already off"_s.arg(m_cleanup.authorizedPlugins->size())
                          .arg(m_cleanup.alreadyDisabledCount()));
    // On purpose: always the plural.
    m_disable->setLabel(u"Disable %1 Plugins"_s.arg(selected));
    m_disable->setEnabled(selected > 0);
}

} // namespace orvanlite
