#include "shell/bulk/BulkActionsView.h"

#include "operations/Detach.h"
#include "operations/PluginManagerViewModel.h"
#include "shell/bulk/BulkConfirmation.h"
#include "shell/bulk/BulkPluginList.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/ChipButton.h"
#include "shell/toolkit/Divider.h"
#include "shell/toolkit/FlowLayout.h"
#include "shell/toolkit/NoticeStrip.h"
#include "shell/toolkit/PressButton.h"
#include "shell/toolkit/RelativeFont.h"
#include "shell/toolkit/TintedLabel.h"
#include "shell/toolkit/ViewUpdater.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QResizeEvent>

#include <algorithm>
#include <utility>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

/// Toggling more plugins than this asks for confirmation.
constexpr std::size_t kMaxWithoutConfirmation = 10;

constexpr int kMarginX = 18; // aligned with the names in the list
constexpr int kActionSpacing = 8;
constexpr int kFormatSpacing = 6;
constexpr int kHeaderSpacing = 12;
constexpr int kHeaderIconSize = 16;
constexpr int kWaveShellGap = 4;

/// Ascending by raw value.
std::vector<PluginFormat> formatsInChipOrder()
{
    std::vector<PluginFormat> formats;
    for (const auto& row : RawValueTable<PluginFormat>::rows)
        formats.push_back(row.value);
    std::sort(formats.begin(), formats.end(),
              [](PluginFormat left, PluginFormat right) { return rawValue(left) < rawValue(right); });
    return formats;
}

QColor faint(const QPalette& palette) { return AppTheme::withOpacity(AppTheme::secondary(palette), 0.7); }

} // namespace

BulkActionsView::BulkActionsView(PluginManagerViewModel& viewModel, BulkConfirmation& confirmation,
                                 QWidget* parent)
    : QWidget(parent)
    , m_viewModel(viewModel)
    , m_confirmation(confirmation)
    , m_updates(new ViewUpdater([this] { render(); }, this))
{
    setObjectName(u"bulkActionsView"_s);
    setAccessibleName(u"Bulk Actions"_s);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeActionRow());
    column->addWidget(makeDivider(this));
    column->addWidget(makeHeaderRow());
    column->addWidget(makeNotices());
    column->addWidget(makeDivider(this));
    m_list = new BulkPluginList(viewModel, m_selectedBulkNames, this);
    column->addWidget(m_list, 1);
    applyListHeight();

    connect(m_list, &BulkPluginList::nameClicked, this, &BulkActionsView::toggleSelected);
    connect(m_list, &BulkPluginList::variantClicked, this,
            [this](const QUuid& id) { m_viewModel.toggleBulkVariant(id); });
    viewModel.consolidatedBulkPlugins.observe(this, [this] { m_isReloadDue = true; });
    m_updates->watch(viewModel.consolidatedBulkPlugins, viewModel.bulkActiveVariants,
                     viewModel.displayedPlugins);
    render();
}

PressButton* BulkActionsView::makeButton(const QString& text, const QString& iconKey,
                                         QColor (*tint)(const QPalette&), const QString& objectName,
                                         QWidget* parent)
{
    auto* button = new PressButton(text, iconKey, PressButton::Ground::bordered, parent);
    button->setObjectName(objectName);
    button->setTint(tint);
    return button;
}

QWidget* BulkActionsView::makeActionRow()
{
    auto* row = new QWidget(this);
    row->setObjectName(u"bulkActionRow"_s);
    auto* flow = new FlowLayout(row, kActionSpacing, AppTheme::kSpace2);
    flow->setContentsMargins(kMarginX, AppTheme::kSpace2, kMarginX, AppTheme::kSpace2);
    auto* enable = makeButton(u"Enable Selected"_s, u"checkmark.circle"_s, &AppTheme::green,
                              u"enableSelectedButton"_s, row);
    auto* disable = makeButton(u"Disable Selected"_s, u"xmark.circle"_s, &AppTheme::orange,
                               u"disableSelectedButton"_s, row);
    auto* remove =
        makeButton(u"Delete Selected"_s, u"trash"_s, &AppTheme::red, u"deleteSelectedButton"_s, row);
    m_actions = {enable, disable, remove};
    for (PressButton* button : m_actions)
        flow->addWidget(button);
    flow->addWidget(makeFormatRow(row));
    connect(enable, &QAbstractButton::clicked, this, [this] { startToggle(BulkAction::enable); });
    connect(disable, &QAbstractButton::clicked, this, [this] { startToggle(BulkAction::disable); });
    connect(remove, &QAbstractButton::clicked, this,
            [this] { ask(BulkAction::delete_, m_viewModel.bulkActionPlugins()); });
    return row;
}

QWidget* BulkActionsView::makeFormatRow(QWidget* parent)
{
    m_formatRow = new QWidget(parent);
    m_formatRow->setObjectName(u"bulkFormatRow"_s);
    auto* flow = new FlowLayout(m_formatRow, kFormatSpacing, AppTheme::kSpace1);
    auto* title = new TintedLabel(u"Formats:"_s, &AppTheme::secondary, m_formatRow);
    title->setObjectName(u"bulkFormatsLabel"_s);
    flow->addWidget(title);
    for (const PluginFormat format : formatsInChipOrder()) {
        auto* chip = new ChipButton(ChipButton::Kind::format, m_formatRow);
        chip->setLabel(rawValue(format));
        chip->setObjectName(u"formatChip"_s + rawValue(format).remove(u' '));
        flow->addWidget(chip);
        m_formatChips.emplace_back(format, chip);
        connect(chip, &QAbstractButton::clicked, this, [this, format] {
            m_isFormatChange = true;
            m_viewModel.toggleBulkFormat(format);
        });
    }
    return m_formatRow;
}

QWidget* BulkActionsView::makeHeaderRow()
{
    auto* row = new QWidget(this);
    row->setObjectName(u"bulkHeaderRow"_s);
    auto* icon = new TintedLabel({}, &AppTheme::accent, row);
    icon->setIcon(u"bolt.circle.fill"_s, kHeaderIconSize);
    auto* title = new QLabel(u"Bulk Actions"_s, row);
    title->setObjectName(u"bulkTitle"_s);
    setRelativeFont(title, 1, QFont::DemiBold);
    m_count = new TintedLabel({}, faint, row);
    m_count->setObjectName(u"bulkCountLabel"_s);
    auto* dot = new TintedLabel(u"·"_s, faint, row);
    m_unique = new TintedLabel({}, faint, row);
    m_unique->setObjectName(u"bulkUniqueLabel"_s);
    m_remove = makeButton({}, {}, nullptr, u"removeFromListButton"_s, row);
    auto* clear = makeButton(u"Clear All"_s, {}, &AppTheme::orange, u"clearAllButton"_s, row);

    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(kMarginX, AppTheme::kSpace2, kMarginX, AppTheme::kSpace2);
    layout->setSpacing(kHeaderSpacing);
    for (QWidget* part : std::initializer_list<QWidget*>{icon, title, m_count, dot, m_unique})
        layout->addWidget(part);
    layout->addStretch(1);
    layout->addWidget(m_remove);
    layout->addWidget(clear);
    connect(m_remove, &QAbstractButton::clicked, this, &BulkActionsView::removeSelected);
    connect(clear, &QAbstractButton::clicked, this, [this] {
        m_viewModel.clearSelection();
        m_selectedBulkNames.clear();
    });
    return row;
}

QWidget* BulkActionsView::makeNotices()
{
    auto* notices = new QWidget(this);
    notices->setObjectName(u"bulkNotices"_s);
    const NoticeContent waveShell{
        u"waveShellWarning"_s, u"exclamationmark.triangle.fill"_s,
        u"WaveShell plugins are containers for all Waves plugins. Disabling a WaveShell will disable ALL Waves "
        u"plugins for that format."_s,
        u"Remove Waves"_s, &AppTheme::orange};
    const NoticeContent bundle{
        u"wavesBundleNotice"_s,
        u"info.circle.fill"_s,
        u"Disabling a Waves plugin moves its .bundle file, which disables it across <b>all formats</b> (AAX, AU, "
        u"VST, VST3) and all installed versions simultaneously."_s,
        {},
        &AppTheme::blue};
    m_waveShellWarning = new NoticeButton(waveShell, notices);
    m_bundleNotice = new NoticeStrip(bundle, notices);
    auto* column = new QVBoxLayout(notices);
    column->setContentsMargins(kMarginX, kWaveShellGap, kMarginX, AppTheme::kSpace2);
    column->setSpacing(AppTheme::kSpace2);
    column->addWidget(m_waveShellWarning);
    column->addWidget(m_bundleNotice);
    connect(m_waveShellWarning, &QAbstractButton::clicked, this,
            [this] { m_viewModel.removeWavesPluginsFromSelection(); });
    return notices;
}

void BulkActionsView::setPaneHeight(double height)
{
    m_paneHeight = height;
    applyListHeight();
}

void BulkActionsView::setExpandsFull(bool expands)
{
    m_expandsFull = expands;
    applyListHeight();
}

void BulkActionsView::applyListHeight()
{
    // Only a preference: in a small window the list shrinks and scrolls.
    m_list->setPreferredHeight(qRound(m_paneHeight));
    m_list->setMaximumHeight(m_expandsFull ? QWIDGETSIZE_MAX : qRound(m_paneHeight));
}

void BulkActionsView::render()
{
    const bool isAnimated = std::exchange(m_isFormatChange, false);
    if (std::exchange(m_isReloadDue, false)) {
        QSet<QString> names;
        for (const ConsolidatedPlugin& plugin : *m_viewModel.consolidatedBulkPlugins)
            names.insert(plugin.name);
        m_selectedBulkNames.intersect(names);
        m_list->reload();
    }
    m_list->renderRows(isAnimated);
    for (PressButton* button : m_actions)
        button->setEnabled(!m_viewModel.persistedSelections.isEmpty());
    renderFormats(isAnimated);
    renderHeader();
    renderNotices();
}

void BulkActionsView::renderFormats(bool isAnimated)
{
    const std::vector<PluginFormat> present = m_viewModel.selectedFormatsInBulk();
    m_formatRow->setVisible(!present.empty());
    for (const auto& [format, chip] : m_formatChips) {
        chip->setVisible(std::find(present.begin(), present.end(), format) != present.end());
        const ChipState state = m_viewModel.isFormatFullyActive(format)       ? ChipState::active
                                : m_viewModel.isFormatPartiallyActive(format) ? ChipState::partlyActive
                                                                              : ChipState::off;
        chip->setState(state, isAnimated);
    }
}

void BulkActionsView::renderHeader()
{
    m_count->setText(u"%1 plugin(s)"_s.arg(m_viewModel.persistedSelections.size()));
    m_unique->setText(u"(%1 unique)"_s.arg(m_viewModel.consolidatedBulkPlugins->size()));
    m_remove->setLabel(u"Remove %1 from list"_s.arg(m_selectedBulkNames.size()));
    if (m_selectedBulkNames.isEmpty() && m_remove->hasFocus())
        m_list->focusCurrentRow(); // otherwise it moves on to "Clear All"
    m_remove->setVisible(!m_selectedBulkNames.isEmpty());
}

void BulkActionsView::renderNotices()
{
    const std::vector<ConsolidatedPlugin>& plugins = *m_viewModel.consolidatedBulkPlugins;
    const bool hasWaveShell = std::any_of(plugins.begin(), plugins.end(), [](const ConsolidatedPlugin& each) {
        return each.name.contains(QLatin1StringView("waveshell"), Qt::CaseInsensitive);
    });
    const bool hasBundle = disablesWavesBundle();
    m_waveShellWarning->setVisible(hasWaveShell);
    m_bundleNotice->setVisible(hasBundle);
    m_waveShellWarning->parentWidget()->setVisible(hasWaveShell || hasBundle);
}

bool BulkActionsView::disablesWavesBundle() const
{
    // Query the catalogue only if there is such a variant.
    const QSet<QUuid>& active = *m_viewModel.bulkActiveVariants;
    const auto isActiveBundle = [&active](const FormatVariant& each) {
        return each.format == PluginFormat::wavesBundle && active.contains(each.id);
    };
    const std::vector<ConsolidatedPlugin>& plugins = *m_viewModel.consolidatedBulkPlugins;
    return std::any_of(plugins.begin(), plugins.end(),
                       [&](const ConsolidatedPlugin& each) {
                           return std::any_of(each.variants.begin(), each.variants.end(), isActiveBundle);
                       }) &&
           m_viewModel.selectionContainsWavesBundleToDisable();
}

void BulkActionsView::startToggle(BulkAction action)
{
    // Accessibility actions bypass InputGate.
    if (*m_viewModel.isRunningScript)
        return;
    AudioPlugins plugins = m_viewModel.bulkActionPlugins();
    const bool wanted = action == BulkAction::enable;
    std::erase_if(plugins, [wanted](const AudioPlugin& each) { return each.isEnabled == wanted; });
    // On purpose: an empty list is passed on too.
    if (plugins.size() <= kMaxWithoutConfirmation)
        detach(m_viewModel.toggleMultiplePlugins(std::move(plugins)));
    else
        ask(action, std::move(plugins));
}

void BulkActionsView::ask(BulkAction action, AudioPlugins plugins)
{
    if (*m_viewModel.isRunningScript)
        return;
    m_confirmation.pendingAction = action;
    m_confirmation.pendingPlugins = std::move(plugins);
    m_confirmation.isShowing = true;
}

void BulkActionsView::toggleSelected(const QString& name)
{
    if (!m_selectedBulkNames.remove(name))
        m_selectedBulkNames.insert(name);
    m_updates->schedule();
}

void BulkActionsView::removeSelected()
{
    const QSet<QString> names = std::exchange(m_selectedBulkNames, {});
    if (!names.isEmpty())
        m_viewModel.deselectPluginsByNames(names);
    m_updates->schedule();
}

QSize BulkActionsView::sizeHint() const
{
    return {layout()->sizeHint().width(), layout()->heightForWidth(width())};
}

QSize BulkActionsView::minimumSizeHint() const
{
    return {layout()->minimumSize().width(), layout()->minimumHeightForWidth(width())};
}

void BulkActionsView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (event->size().width() != event->oldSize().width())
        updateGeometry();
}

void BulkActionsView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    liquidGlassCard(painter, rect(), 0, palette());
}

} // namespace orvanlite
