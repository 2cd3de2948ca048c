#include "shell/sidebar/StatisticsView.h"

#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/TintedLabel.h"

#include <QGridLayout>
#include <QPainter>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

/// Aligned with the titles and counts of the rows.
constexpr int kLeft = 32;
constexpr int kRight = 12;
constexpr int kCapsulePadding = 7;

/// A number on a capsule, which is painted dark in a light window: the status colours are the same in light
/// and dark, and too faint on white.
class NumberLabel final : public TintedLabel {
public:
    NumberLabel(const Colour& colour, QWidget* parent)
        : TintedLabel(u"0"_s, colour, parent)
        , m_colour(colour)
    {
        setFont(AppTheme::semibold({}));
        setContentsMargins(kCapsulePadding, 1, kCapsulePadding, 1);
    }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        const QPalette colours = parentWidget()->palette(); // not the label's own
        const QColor colour = m_colour(colours);
        if (!AppTheme::isDark(colours) && AppTheme::legible(colour, colours) != colour) {
            QPainter painter(this);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(Qt::NoPen);
            painter.setBrush(AppTheme::primary(colours));
            painter.drawRoundedRect(rect(), height() / 2.0, height() / 2.0);
        }
        TintedLabel::paintEvent(event);
    }

private:
    Colour m_colour;
};

QLabel* addRow(QGridLayout* grid, const QString& title, const TintedLabel::Colour& colour)
{
    QWidget* parent = grid->parentWidget();
    const int row = grid->rowCount();
    auto* label = new TintedLabel(title, &AppTheme::secondary, parent);
    label->setMinimumWidth(1);
    auto* number = new NumberLabel(colour, parent);
    number->setObjectName(u"statistics"_s + title);
    grid->addWidget(label, row, 0);
    grid->addWidget(number, row, 1, Qt::AlignRight);
    return number;
}

/// Also names for screen readers what is counted.
void showNumber(QLabel* label, int number, const QString& title)
{
    label->setText(QString::number(number));
    label->setAccessibleName(title + u": "_s + label->text());
}

} // namespace

StatisticsView::StatisticsView(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(u"statisticsView"_s);
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(kLeft, 0, kRight - kCapsulePadding, AppTheme::kSpace1);
    grid->setVerticalSpacing(AppTheme::kSpace1);
    grid->setColumnStretch(0, 1);
    m_total = addRow(grid, u"Total"_s, &AppTheme::primary);
    m_enabled =
        addRow(grid, u"Enabled"_s, [](const QPalette& /*colours*/) { return AppTheme::statusEnabled(); });
    m_disabled =
        addRow(grid, u"Disabled"_s, [](const QPalette& /*colours*/) { return AppTheme::statusDisabled(); });
}

void StatisticsView::setCounts(int total, int enabled, int disabled)
{
    showNumber(m_total, total, u"Total"_s);
    showNumber(m_enabled, enabled, u"Enabled"_s);
    showNumber(m_disabled, disabled, u"Disabled"_s);
}

} // namespace orvanlite
