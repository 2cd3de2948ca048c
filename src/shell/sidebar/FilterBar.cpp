#include "shell/sidebar/FilterBar.h"

#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/ElidedLabel.h"
#include "shell/toolkit/PressButton.h"
#include "shell/toolkit/TintedLabel.h"

#include <QHBoxLayout>
#include <QPainter>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kInsetX = 4; // aligned with the backgrounds of the rows
constexpr int kIconSize = 16;
constexpr double kCornerRadius = 7;

} // namespace

FilterBar::FilterBar(QWidget* parent)
    : QWidget(parent)
    , m_summary(new ElidedLabel({}, this))
{
    setObjectName(u"filterBar"_s);
    auto* icon = new TintedLabel(
        {}, [](const QPalette&) { return AppTheme::accentBlue(); }, this);
    icon->setIcon(u"line.3.horizontal.decrease.circle.fill"_s, kIconSize);
    m_summary->setObjectName(u"filterSummary"_s);
    auto* clear =
        makeIconButton(u"xmark.circle.fill"_s, u"Clear all filters"_s, u"clearFiltersButton"_s, this);
    connect(clear, &QAbstractButton::clicked, this, &FilterBar::clearClicked);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(kInsetX + AppTheme::kSpace2, AppTheme::kSpace1, kInsetX, AppTheme::kSpace1);
    row->setSpacing(AppTheme::kSpace2);
    row->addWidget(icon);
    row->addWidget(m_summary, 1);
    row->addWidget(clear);
}

void FilterBar::setSummary(const QString& summary) { m_summary->setText(summary); }

void FilterBar::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    liquidGlassTinted(painter, QRectF(rect()).adjusted(kInsetX, 0, -kInsetX, 0), AppTheme::accentBlue(),
                      kCornerRadius, palette());
}

} // namespace orvanlite
