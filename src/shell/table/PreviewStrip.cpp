#include "shell/table/PreviewStrip.h"

#include "operations/ProfilePreview.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Control.h"
#include "shell/toolkit/ElidedLabel.h"
#include "shell/toolkit/Icons.h"
#include "shell/toolkit/PressButton.h"
#include "shell/toolkit/RelativeFont.h"
#include "shell/toolkit/TintedLabel.h"
#include "shell/toolkit/ViewUpdater.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPainter>

#include <array>
#include <utility>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kPaddingX = 16;
constexpr int kPaddingTop = 8;
constexpr int kRowGap = 4;
constexpr int kPaddingBottom = 8;
constexpr int kSpacing = 8;
constexpr int kEyeSize = 15;

constexpr int kTabPaddingX = 12;
constexpr int kTabPaddingY = 5;
constexpr int kTabSpacing = 5;
constexpr int kTabIconSize = 14;
constexpr double kTabRadius = 6;

struct Slice {
    QString value; ///< value of `profileViewFilter`
    QString label;
    QString iconKey;
    QColor (*colour)(const QPalette&);
};

const std::array<Slice, 4>& slices()
{
    static const std::array<Slice, 4> all{
        Slice{u"changes"_s, u"Changes"_s, u"arrow.triangle.2.circlepath"_s, &AppTheme::orange},
        Slice{u"enabled"_s, u"Enabled"_s, u"checkmark.circle"_s, &AppTheme::green},
        Slice{u"disabled"_s, u"Disabled"_s, u"xmark.circle"_s, &AppTheme::red},
        Slice{u"all"_s, u"All"_s, u"list.bullet"_s, [](const QPalette&) { return AppTheme::accentBlue(); }}};
    return all;
}

/// A tab of the preview; semibold on a background of its colour while selected.
class PreviewTab final : public Control {
public:
    PreviewTab(const Slice& slice, QWidget* parent)
        : Control(parent)
        , m_slice(slice)
    {
        setLabel(slice.label);
        setObjectName(u"previewTab"_s + slice.label);
        setCheckable(true);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }

    [[nodiscard]] QSize sizeHint() const override
    {
        // The wider font, so that selecting a tab moves no other.
        const QFontMetrics metrics(AppTheme::semibold(font()));
        return {metrics.horizontalAdvance(label()) + kTabIconSize + kTabSpacing + 2 * kTabPaddingX,
                std::max(metrics.height(), kTabIconSize) + 2 * kTabPaddingY};
    }

protected:
    void paint(QPainter& painter) const override
    {
        const QColor colour = m_slice.colour(palette());
        if (isChecked() || underMouse()) {
            painter.setPen(isChecked() ? QPen(AppTheme::withOpacity(colour, 0.4), 1) : QPen(Qt::NoPen));
            painter.setBrush(AppTheme::withOpacity(colour, isChecked() ? 0.2 : isDown() ? 0.14 : 0.08));
            painter.drawRoundedRect(bounds(), kTabRadius, kTabRadius);
        }
        const QColor foreground = AppTheme::legible(colour, palette());
        const QRectF icon(kTabPaddingX, (height() - kTabIconSize) / 2.0, kTabIconSize, kTabIconSize);
        drawIcon(painter, icon, m_slice.iconKey, foreground);
        painter.setFont(isChecked() ? AppTheme::semibold(font()) : font());
        painter.setPen(isChecked() ? foreground : AppTheme::primary(palette()));
        painter.drawText(QRectF(rect()).adjusted(icon.right() + kTabSpacing, 0, 0, 0),
                         Qt::AlignLeft | Qt::AlignVCenter, label());
    }
    [[nodiscard]] FocusRing focusRing() const override { return accentRing(rect(), kTabRadius); }

private:
    [[nodiscard]] QRectF bounds() const { return QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5); }

    const Slice& m_slice;
};

} // namespace

PreviewStrip::PreviewStrip(ProfilePreview& preview, QWidget* parent)
    : QWidget(parent)
    , m_preview(preview)
    , m_title(new ElidedLabel({}, this))
    , m_close(new PressButton(u"Close Preview"_s, u"xmark.circle.fill"_s, PressButton::Ground::none, this))
    , m_tabs(new QButtonGroup(this))
    , m_updates(new ViewUpdater([this] { render(); }, this))
{
    setObjectName(u"previewStrip"_s);
    auto* eye = new TintedLabel(
        {}, [](const QPalette& colours) { return AppTheme::legible(AppTheme::accentBlue(), colours); }, this);
    eye->setIcon(u"eye.fill"_s, kEyeSize);
    m_title->setObjectName(u"previewTitle"_s);
    setRelativeFont(m_title, AppTheme::kCaption);
    m_close->setObjectName(u"closePreviewButton"_s);
    m_close->setTextColour(&AppTheme::secondary);
    connect(m_close, &QAbstractButton::clicked, this, &PreviewStrip::closeClicked);

    auto* firstRow = new QHBoxLayout;
    firstRow->setSpacing(kSpacing);
    firstRow->addWidget(eye);
    firstRow->addWidget(m_title, 1);
    firstRow->addWidget(m_close);
    auto* secondRow = new QHBoxLayout;
    secondRow->setSpacing(kSpacing);
    for (const Slice& slice : slices()) {
        auto* tab = new PreviewTab(slice, this);
        m_tabs->addButton(tab);
        secondRow->addWidget(tab);
        connect(tab, &QAbstractButton::clicked, this,
                [this, &slice] { m_preview.profileViewFilter = slice.value; });
    }
    secondRow->addStretch(1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(kPaddingX, kPaddingTop, kPaddingX, kPaddingBottom);
    column->setSpacing(kRowGap);
    column->addLayout(firstRow);
    column->addLayout(secondRow);

    m_updates->watch(preview.activeProfile, preview.profileViewFilter);
    render();
}

void PreviewStrip::render()
{
    const auto& profile = *m_preview.activeProfile;
    m_title->setText(profile ? u"Previewing profile: \"%1\""_s.arg(profile->name) : QString());
    const QList<QAbstractButton*> tabs = m_tabs->buttons();
    for (std::size_t i = 0; i < slices().size(); ++i) {
        if (slices()[i].value == *m_preview.profileViewFilter)
            tabs[static_cast<qsizetype>(i)]->setChecked(true);
    }
}

void PreviewStrip::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.fillRect(
        rect(), AppTheme::withOpacity(AppTheme::accentBlue(), AppTheme::isDark(palette()) ? 0.22 : 0.16));
}

} // namespace orvanlite
