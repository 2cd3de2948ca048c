#include "shell/sidebar/SidebarActions.h"

#include "shell/sidebar/SidebarButton.h"
#include "shell/sidebar/SidebarRules.h"
#include "shell/toolkit/AppTheme.h"

#include <QPainter>
#include <QVBoxLayout>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kSpacing = 6;
constexpr int kPadding = 10;
constexpr double kCornerRadius = 8;

/// White text on a strong background.
class ActionButton final : public SidebarButton {
public:
    ActionButton(QColor (*tint)(const QPalette&), QWidget* parent)
        : SidebarButton(
              {.iconSlot = 18, .paddingX = kPadding, .paddingY = kPadding, .cornerRadius = kCornerRadius},
              parent)
        , m_tint(tint)
    {
        setFont(AppTheme::semibold({}));
    }

protected:
    void paintGround(QPainter& painter, const QRectF& ground) const override
    {
        // Never lighter, to keep the text legible.
        const int shade = isDown() ? 125 : underMouse() ? 112 : 100;
        painter.setPen(Qt::NoPen);
        painter.setBrush(AppTheme::groundForWhite(m_tint(palette())).darker(shade));
        painter.drawRoundedRect(ground, kCornerRadius, kCornerRadius);
    }
    [[nodiscard]] QColor ink() const override { return Qt::white; }
    [[nodiscard]] QColor iconInk() const override { return ink(); }
    [[nodiscard]] FocusRing focusRing() const override
    {
        FocusRing ring = SidebarButton::focusRing();
        ring.colour = Qt::white;
        return ring;
    }

private:
    QColor (*m_tint)(const QPalette&);
};

} // namespace

SidebarActions::SidebarActions(QWidget* parent)
    : QWidget(parent)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kSpacing - 2); // each button has a margin of one pixel
    const auto add = [&](BulkAction action, const QString& name, const QString& iconKey,
                         QColor (*tint)(const QPalette&)) {
        auto* button = new ActionButton(tint, this);
        button->setObjectName(name);
        button->setIconKey(iconKey);
        column->addWidget(button);
        m_buttons.emplace_back(action, button);
        connect(button, &QAbstractButton::clicked, this, [this, action] { Q_EMIT requested(action); });
    };
    add(BulkAction::enable, u"enableFilteredButton"_s, u"checkmark.circle.fill"_s, &AppTheme::green);
    add(BulkAction::disable, u"disableFilteredButton"_s, u"xmark.circle.fill"_s, &AppTheme::orange);
    add(BulkAction::delete_, u"deleteFilteredButton"_s, u"trash.fill"_s, &AppTheme::red);
}

void SidebarActions::setFilter(const PluginFilter& filter)
{
    for (const auto& [action, button] : m_buttons)
        button->setLabel(enableDisableButtonLabel(action, filter));
}

} // namespace orvanlite
