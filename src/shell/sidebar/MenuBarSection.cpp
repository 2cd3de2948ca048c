#include "shell/sidebar/MenuBarSection.h"

#include "shell/sidebar/MenuBarLoginItem.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/SwitchRow.h"
#include "shell/toolkit/TintedLabel.h"

#include <QEvent>
#include <QHBoxLayout>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

// Aligned with the headers of the other sections, which have a chevron instead of the icon.
constexpr int kLeft = 12;
constexpr int kIconSlot = 14;
constexpr int kIconGap = 6;

} // namespace

MenuBarSection::MenuBarSection(MenuBarLoginItem& loginItem, QWidget* parent)
    : QWidget(parent)
    , m_loginItem(loginItem)
    , m_switch(new SwitchRow(u"Launch at Login"_s, u"Monitors for new plugins"_s, this))
{
    setObjectName(u"menuBarSection"_s);
    m_switch->setObjectName(u"launchAtLoginSwitch"_s);
    auto* icon = new TintedLabel(QString(), &AppTheme::secondary, this);
    icon->setIcon(u"menubar.rectangle"_s, kIconSlot);
    auto* title = new TintedLabel(u"Menu Bar"_s, &AppTheme::primary, this);
    title->setObjectName(u"menuBarTitle"_s);
    title->setMinimumWidth(1);
    title->setFont(AppTheme::semibold({}));

    auto* header = new QHBoxLayout;
    header->setContentsMargins(kLeft, AppTheme::kSpace1, kLeft, AppTheme::kSpace1);
    header->setSpacing(kIconGap);
    header->addWidget(icon);
    header->addWidget(title, 1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(header);
    column->addWidget(m_switch);
    connect(m_switch, &QAbstractButton::clicked, this, [this] {
        // Toggle the system's state: the shown one may be out of date.
        m_loginItem.setEnabled(!m_loginItem.isEnabled());
        refresh();
    });
    refresh();
}

void MenuBarSection::refresh() { m_switch->setOn(m_loginItem.isEnabled()); }

void MenuBarSection::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    refresh();
}

void MenuBarSection::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    // The user may have changed the login items in the system settings.
    if (event->type() == QEvent::ActivationChange && isVisible())
        refresh();
}

} // namespace orvanlite
