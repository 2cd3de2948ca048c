#include "shell/sheets/NewPluginsSheet.h"

#include "profiles/NewPlugins.h"
#include "profiles/ProfileManager.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/ChipButton.h"
#include "shell/toolkit/FlowLayout.h"
#include "shell/toolkit/PressButton.h"
#include "shell/toolkit/RelativeFont.h"
#include "shell/toolkit/TickList.h"
#include "shell/toolkit/TintedLabel.h"
#include "shell/toolkit/ViewUpdater.h"

#include <QVBoxLayout>

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kSmallestWidth = 480;
constexpr int kLargestWidth = 680;
constexpr int kCharactersAcross = 60;
constexpr int kPluginsHeight = 200;
constexpr int kProfilesHeight = 120;
constexpr int kTitleSign = 22;
constexpr int kNoteSign = 15;

TintedLabel* text(const QString& words, TintedLabel::Colour colour, const QString& objectName,
                  QWidget* parent)
{
    auto* label = new TintedLabel(words, std::move(colour), parent);
    label->setObjectName(objectName);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

TintedLabel* sign(const QString& iconKey, int size, TintedLabel::Colour colour, QWidget* parent)
{
    auto* icon = new TintedLabel({}, std::move(colour), parent);
    icon->setIcon(iconKey, size);
    return icon;
}

QHBoxLayout* rowOf(QWidget* widget)
{
    auto* row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(AppTheme::kSpace2);
    return row;
}

} // namespace

NewPluginsSheet::NewPluginsSheet(Observable<NewPlugins>& state, const ProfileManager& profiles,
                                 QWidget* parent)
    : Sheet(parent)
    , m_state(state)
    , m_profiles(profiles)
    , m_updates(new ViewUpdater([this] { render(); }, this))
{
    setObjectName(u"newPluginsSheet"_s);
    setWindowTitle(u"Add New Plugins to Profiles"_s);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(AppTheme::kSpace5, AppTheme::kSpace5, AppTheme::kSpace5, AppTheme::kSpace5);
    column->setSpacing(AppTheme::kSpace3);
    // In tab order.
    column->addWidget(makeTitle());
    m_explanation = text({}, &AppTheme::secondary, u"newPluginsExplanation"_s, this);
    column->addWidget(m_explanation);
    column->addWidget(makeChips());
    m_pluginList = makeList(u"newPluginsList"_s, u"New plugins"_s, kPluginsHeight);
    column->addWidget(m_pluginList);
    m_selected = text({}, &AppTheme::secondary, u"newPluginsSelectedLabel"_s, this);
    column->addWidget(m_selected);
    column->addWidget(makeProfilesHeading());
    m_profileList = makeList(u"newPluginsProfileList"_s, u"Profiles"_s, kProfilesHeight);
    column->addWidget(m_profileList);
    column->addWidget(makeNote());
    column->addStretch(1);
    column->addWidget(makeButtons());
    connectControls();
    m_updates->watch(state, profiles.profiles);
    m_updates->schedule();
    onFontChange(this, [this] { fit(); });
}

QWidget* NewPluginsSheet::makeTitle()
{
    auto* title = new QWidget(this);
    QLabel* words = text(windowTitle(), &AppTheme::primary, u"newPluginsTitle"_s, title);
    setRelativeFont(words, 1.15, QFont::DemiBold);
    QHBoxLayout* row = rowOf(title);
    row->addWidget(sign(u"sparkles"_s, kTitleSign, &AppTheme::orange, title));
    row->addWidget(words, 1);
    return title;
}

QWidget* NewPluginsSheet::makeChips()
{
    auto* chips = new QWidget(this);
    auto* flow = new FlowLayout(chips, AppTheme::kSpace2, AppTheme::kSpace1);
    auto* label = new QLabel(u"Formats:"_s, chips);
    label->setObjectName(u"newPluginsFormatsLabel"_s);
    flow->addWidget(label);
    for (ChipButton*& chip : m_chips) {
        chip = new ChipButton(ChipButton::Kind::format, chips);
        chip->hide();
        flow->addWidget(chip);
    }
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    chips->setSizePolicy(policy);
    return chips;
}

TickList* NewPluginsSheet::makeList(const QString& objectName, const QString& name, int largestHeight)
{
    auto* list = new TickList(largestHeight, this);
    list->setObjectName(objectName);
    list->setAccessibleName(name);
    return list;
}

QWidget* NewPluginsSheet::makeProfilesHeading()
{
    auto* heading = new QWidget(this);
    QLabel* words = text(u"Add to profiles:"_s, &AppTheme::primary, u"newPluginsProfilesHeading"_s, heading);
    setRelativeFont(words, 1, QFont::DemiBold);
    m_allProfiles = new PressButton({}, {}, PressButton::Ground::accent, heading);
    m_allProfiles->setObjectName(u"newPluginsAllProfilesButton"_s);
    QHBoxLayout* row = rowOf(heading);
    row->addWidget(words, 1);
    row->addWidget(m_allProfiles);
    return heading;
}

QWidget* NewPluginsSheet::makeNote()
{
    auto* note = new QWidget(this);
    QHBoxLayout* row = rowOf(note);
    row->addWidget(sign(u"info.circle"_s, kNoteSign, &AppTheme::secondary, note), 0, Qt::AlignTop);
    row->addWidget(text(u"Plugins will be added matching their current state (enabled/disabled on disk)."_s,
                        &AppTheme::secondary, u"newPluginsNote"_s, note),
                   1);
    return note;
}

QWidget* NewPluginsSheet::makeButtons()
{
    auto* buttons = new QWidget(this);
    m_skip = new PressButton(u"Skip"_s, {}, PressButton::Ground::bordered, buttons);
    m_skip->setObjectName(u"skipNewPluginsButton"_s);
    m_add = new PressButton({}, {}, PressButton::Ground::bordered, buttons);
    m_add->setObjectName(u"addNewPluginsButton"_s);
    m_add->setTint(&AppTheme::accent);
    QHBoxLayout* row = rowOf(buttons);
    row->addWidget(m_skip);
    row->addStretch(1);
    row->addWidget(m_add);
    return buttons;
}

void NewPluginsSheet::connectControls()
{
    for (std::size_t i = 0; i < m_chips.size(); ++i) {
        connect(m_chips[i], &QAbstractButton::clicked, this, [this, i] {
            m_state.mutate([i](NewPlugins& state) { state.toggleFormat(state.detectedFormats()[i]); });
        });
    }
    connect(m_pluginList, &TickList::toggled, this, [this](int row) {
        m_state.mutate([row](NewPlugins& state) {
            state.togglePlugin(state.detectedNewPlugins[static_cast<std::size_t>(row)]);
        });
    });
    connect(m_allProfiles, &QAbstractButton::clicked, this,
            [this] { m_state.mutate([this](NewPlugins& state) { state.toggleAllProfiles(m_profiles); }); });
    connect(m_profileList, &TickList::toggled, this, [this](int row) {
        const QUuid id = (*m_profiles.profiles)[static_cast<std::size_t>(row)].id;
        m_state.mutate([id](NewPlugins& state) { state.toggleProfile(id); });
    });
    connect(m_skip, &QAbstractButton::clicked, this, &NewPluginsSheet::skipRequested);
    connect(m_add, &QAbstractButton::clicked, this, &NewPluginsSheet::addRequested);
}

QAbstractButton* NewPluginsSheet::mainButton() const { return m_add; }

void NewPluginsSheet::present()
{
    m_updates->flush();
    fit();
    open();
}

void NewPluginsSheet::fit()
{
    const int wanted = kCharactersAcross * fontMetrics().averageCharWidth();
    const int width =
        std::max(std::clamp(wanted, kSmallestWidth, kLargestWidth), layout()->minimumSize().width());
    resize(width, layout()->totalHeightForWidth(width));
}

void NewPluginsSheet::render()
{
    renderChips();
    const NewPlugins& state = *m_state;
    m_explanation->setText(state.explanation());
    std::vector<TickRow> plugins;
    for (const AudioPlugin& each : state.detectedNewPlugins) {
        plugins.push_back({each.id, each.name, rawValue(each.format),
                           each.isEnabled ? u"Enabled"_s : u"Disabled"_s,
                           state.selectedNewPluginIds.contains(each.id)});
    }
    m_pluginList->setRows(std::move(plugins));
    m_selected->setText(state.selectionText());
    std::vector<TickRow> profiles;
    for (const PluginProfile& each : *m_profiles.profiles)
        profiles.push_back(
            {each.id, each.name, {}, {}, state.selectedProfilesForNewPlugins.contains(each.id)});
    m_profileList->setRows(std::move(profiles));
    m_allProfiles->setLabel(state.hasAllProfiles(m_profiles) ? u"Deselect All"_s : u"Select All"_s);
    m_add->setLabel(state.addButtonText());
    m_add->setEnabled(state.canAdd());
}

void NewPluginsSheet::renderChips()
{
    const std::vector<PluginFormat> formats = m_state->detectedFormats();
    for (std::size_t i = 0; i < m_chips.size(); ++i) {
        ChipButton* chip = m_chips[i];
        chip->setVisible(i < formats.size());
        if (i >= formats.size())
            continue;
        chip->setObjectName(u"newPluginsChip "_s + rawValue(formats[i]));
        chip->setLabel(m_state->chipText(formats[i]));
        const bool isOn = m_state->selectedNewPluginFormats.contains(formats[i]);
        chip->setState(isOn ? ChipState::active : ChipState::off);
    }
}

} // namespace orvanlite
