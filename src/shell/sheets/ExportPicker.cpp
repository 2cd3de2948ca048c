#include "shell/sheets/ExportPicker.h"

#include "records/ReportFormat.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Divider.h"
#include "shell/toolkit/FocusRing.h"
#include "shell/toolkit/PressButton.h"
#include "shell/toolkit/RelativeFont.h"
#include "shell/toolkit/TintedLabel.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QPainter>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kWidth = 380;
constexpr int kPadding = 30;
constexpr int kSpacing = 20;
constexpr int kButtonSpacing = 16;
constexpr int kRadioSpacing = 2;
constexpr int kRadioPadding = 4;
constexpr int kRadioRing = 14;
constexpr int kSegmentPaddingX = 14;
constexpr int kSegmentPaddingY = 5;
constexpr double kSegmentRadius = 5;
constexpr int kFrame = 2; ///< width of the background's border around the segments

/// One segment of a segmented control.
class SegmentButton final : public QAbstractButton {
public:
    SegmentButton(const QString& text, QWidget* parent)
        : QAbstractButton(parent)
    {
        setText(text);
        setCheckable(true);
        setFocusPolicy(Qt::StrongFocus);
        setAttribute(Qt::WA_Hover);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    }
    [[nodiscard]] QSize sizeHint() const override
    {
        const QFontMetrics metrics(AppTheme::semibold(font())); // the width does not change on selection
        return {metrics.horizontalAdvance(text()) + 2 * kSegmentPaddingX,
                metrics.height() + 2 * kSegmentPaddingY};
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QPalette& colours = palette();
        const QRectF bounds = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
        if (isChecked()) {
            painter.setPen(QPen(AppTheme::glassBorder(colours), 1));
            painter.setBrush(colours.color(QPalette::Button));
            painter.drawRoundedRect(bounds, kSegmentRadius, kSegmentRadius);
        } else if (underMouse() || isDown()) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(AppTheme::withOpacity(AppTheme::primary(colours), isDown() ? 0.14 : 0.07));
            painter.drawRoundedRect(bounds, kSegmentRadius, kSegmentRadius);
        }
        painter.setFont(isChecked() ? AppTheme::semibold(font()) : font());
        painter.setPen(AppTheme::primary(colours));
        painter.drawText(rect(), Qt::AlignCenter, text());
        if (hasFocus())
            drawFocusRing(painter, bounds.adjusted(0.5, 0.5, -0.5, -0.5), kSegmentRadius,
                          AppTheme::accent(colours));
    }
};

/// A radio button whose outline is visible in light and dark and scales with the text.
class SortButton final : public QRadioButton {
public:
    SortButton(const QString& text, QWidget* parent)
        : QRadioButton(text, parent)
    {
        setAttribute(Qt::WA_Hover);
        setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    }
    [[nodiscard]] QSize sizeHint() const override
    {
        const QFontMetrics metrics = fontMetrics();
        return {ringSize() + AppTheme::kSpace2 + metrics.horizontalAdvance(text()) + 2 * kRadioPadding,
                metrics.height() + 2 * kRadioPadding};
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    [[nodiscard]] bool hitButton(const QPoint& place) const override { return rect().contains(place); }
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QPalette& colours = palette();
        const QColor ink = AppTheme::primary(colours);
        const double side = ringSize();
        const QRectF ring(kRadioPadding, (height() - side) / 2, side, side);
        painter.setPen(QPen(isChecked() ? AppTheme::accent(colours) : AppTheme::secondary(colours), 1.2));
        painter.setBrush(isChecked() ? AppTheme::accent(colours)
                                     : AppTheme::withOpacity(ink, isDown()       ? 0.2
                                                                  : underMouse() ? 0.1
                                                                                 : 0.03));
        painter.drawEllipse(ring.adjusted(1, 1, -1, -1));
        if (isChecked()) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(colours.highlightedText());
            painter.drawEllipse(ring.center(), side * 0.18, side * 0.18);
        }
        painter.setPen(ink);
        painter.drawText(rect().adjusted(static_cast<int>(ring.right()) + AppTheme::kSpace2, 0, 0, 0),
                         int(Qt::AlignLeft) | Qt::AlignVCenter, text());
        if (hasFocus())
            drawFocusRing(painter, QRectF(rect()).adjusted(1, 1, -1, -1), kSegmentRadius,
                          AppTheme::accent(colours));
    }

private:
    [[nodiscard]] int ringSize() const { return std::max(kRadioRing, fontMetrics().ascent()); }
};

/// The common background of the segments.
class SegmentBackground final : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(AppTheme::withOpacity(AppTheme::primary(palette()), 0.1), 1));
        painter.setBrush(AppTheme::withOpacity(AppTheme::primary(palette()), 0.06));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kSegmentRadius + kFrame,
                                kSegmentRadius + kFrame);
    }
};

/// Gives the widget a column layout that starts with a heading.
QVBoxLayout* headed(QWidget* part, const QString& heading, const QString& objectName)
{
    auto* label = new QLabel(heading, part);
    label->setObjectName(objectName);
    setRelativeFont(label, 1, QFont::DemiBold);
    auto* column = new QVBoxLayout(part);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(AppTheme::kSpace2);
    column->addWidget(label);
    return column;
}

} // namespace

ExportPicker::ExportPicker(ExportFormat& format, ExportSortOption& sortOption, QWidget* parent)
    : Sheet(parent)
    , m_format(format)
    , m_sortOption(sortOption)
{
    setObjectName(u"exportPicker"_s);
    setWindowTitle(u"Export Plugins"_s);
    auto* title = new QLabel(windowTitle(), this);
    title->setObjectName(u"exportTitle"_s);
    setRelativeFont(title, 1.3, QFont::DemiBold);
    title->setAlignment(Qt::AlignHCenter);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
    column->setSpacing(kSpacing);
    // In tab order.
    column->addWidget(title);
    column->addWidget(makeFormats());
    column->addWidget(makeDivider(this));
    column->addWidget(makeSortOptions());
    m_caption = new TintedLabel({}, &AppTheme::secondary, this);
    m_caption->setObjectName(u"exportCaption"_s);
    setRelativeFont(m_caption, 0.9);
    m_caption->setWordWrap(true);
    column->addWidget(m_caption);
    column->addStretch(1);
    column->addWidget(makeButtons());
    render();
    onFontChange(this, [this] { fit(); });
}

QWidget* ExportPicker::makeFormats()
{
    auto* part = new QWidget(this);
    QVBoxLayout* column = headed(part, u"Format"_s, u"exportFormatLabel"_s);
    auto* ground = new SegmentBackground(part);
    ground->setAccessibleName(u"Format"_s);
    auto* row = new QHBoxLayout(ground);
    row->setContentsMargins(kFrame, kFrame, kFrame, kFrame);
    row->setSpacing(kFrame);
    auto* group = new QButtonGroup(ground);
    for (const ExportFormat format : allCases<ExportFormat>) {
        auto* segment = new SegmentButton(rawValue(format), ground);
        segment->setObjectName(u"exportFormat"_s + rawValue(format));
        segment->setAccessibleDescription(u"Format of the report"_s);
        segment->setAutoExclusive(true); // screen readers report one choice of several
        group->addButton(segment);
        segment->setChecked(format == m_format);
        if (segment->isChecked())
            segment->setFocus();
        row->addWidget(segment);
        connect(segment, &QAbstractButton::toggled, this, [this, format](bool isPicked) {
            if (!isPicked)
                return;
            m_format = format;
            render();
        });
    }
    column->addWidget(ground);
    return part;
}

QWidget* ExportPicker::makeSortOptions()
{
    auto* part = new QWidget(this);
    QVBoxLayout* column = headed(part, u"Sort by"_s, u"exportSortLabel"_s);
    auto* choice = new QWidget(part);
    choice->setAccessibleName(u"Sort by"_s);
    auto* rows = new QVBoxLayout(choice);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(kRadioSpacing);
    auto* group = new QButtonGroup(choice);
    for (const ExportSortOption option : allCases<ExportSortOption>) {
        auto* radio = new SortButton(rawValue(option), choice);
        radio->setObjectName(u"exportSort "_s + rawValue(option));
        radio->setAccessibleDescription(u"Sort by"_s);
        group->addButton(radio);
        radio->setChecked(option == m_sortOption);
        rows->addWidget(radio);
        connect(radio, &QAbstractButton::toggled, this, [this, option](bool isPicked) {
            if (isPicked)
                m_sortOption = option;
        });
    }
    column->addWidget(choice);
    return part;
}

QWidget* ExportPicker::makeButtons()
{
    auto* buttons = new QWidget(this);
    auto* cancel = new PressButton(u"Cancel"_s, {}, PressButton::Ground::bordered, buttons);
    cancel->setObjectName(u"exportCancelButton"_s);
    m_export = new PressButton({}, {}, PressButton::Ground::bordered, buttons);
    m_export->setObjectName(u"exportConfirmButton"_s);
    m_export->setTint(&AppTheme::accent);
    setRelativeFont(m_export, 1, QFont::DemiBold);
    connect(cancel, &QAbstractButton::clicked, this, &QDialog::reject);
    connect(m_export, &QAbstractButton::clicked, this, &QDialog::accept);
    auto* row = new QHBoxLayout(buttons);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kButtonSpacing);
    row->addStretch(1);
    row->addWidget(cancel);
    row->addWidget(m_export);
    return buttons;
}

void ExportPicker::render()
{
    m_caption->setText(reportFormat(m_format).caption);
    m_export->setLabel(u"Export as %1"_s.arg(rawValue(m_format)));
}

void ExportPicker::present()
{
    fit();
    open();
}

void ExportPicker::fit()
{
    const int width = std::max(kWidth, layout()->minimumSize().width());
    // Reserve space for the longest caption, so that nothing moves under the pointer.
    int captionHeight = 0;
    for (const ExportFormat format : allCases<ExportFormat>) {
        m_caption->setText(reportFormat(format).caption);
        captionHeight = std::max(captionHeight, m_caption->heightForWidth(width - 2 * kPadding));
    }
    m_caption->setMinimumHeight(captionHeight);
    render();
    resize(width, layout()->totalHeightForWidth(width));
}

QAbstractButton* ExportPicker::mainButton() const { return m_export; }

} // namespace orvanlite
