#include "shell/sidebar/SidebarSection.h"

#include "shell/sidebar/SidebarButton.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Motion.h"

#include <QApplication>
#include <QHBoxLayout>

#include <cmath>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kOpenMilliseconds = 200;
constexpr int kChevronSlot = 14;
constexpr int kChevronSize = 12;
constexpr int kBodyGap = 4;
constexpr int kButtonInset = 4; // aligned with the backgrounds of the rows

class SectionHeader final : public SidebarButton {
public:
    explicit SectionHeader(QWidget* parent)
        : SidebarButton({.iconSlot = kChevronSlot, .iconSize = kChevronSize, .gap = 6}, parent)
    {
        setCheckable(true);
        setFont(AppTheme::semibold({}));
    }
    [[nodiscard]] bool opensSection() const override { return true; }
};

} // namespace

/// Shows the upper part of the content up to the current extent; the content itself keeps its full height.
class SectionBody final : public QWidget {
public:
    explicit SectionBody(QWidget* parent)
        : QWidget(parent)
    {
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    }
    void setContent(QWidget* content)
    {
        m_content = content;
        content->setParent(this);
        content->show();
        place();
    }
    void setExtent(double extent)
    {
        m_extent = extent;
        updateGeometry();
        place();
    }
    void setShrinkable() { m_isShrinkable = true; }

    [[nodiscard]] QSize sizeHint() const override { return {minimumWidth(), shown(contentHeight())}; }
    [[nodiscard]] QSize minimumSizeHint() const override
    {
        const int narrowest = m_content ? m_content->minimumSizeHint().width() : 0;
        return {narrowest, shown(m_isShrinkable ? leastHeight() : contentHeight())};
    }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        QWidget::resizeEvent(event);
        updateGeometry(); // wrapped texts need more lines at a smaller width
        place();
    }
    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::LayoutRequest) {
            updateGeometry();
            place();
        }
        return QWidget::event(event);
    }

private:
    [[nodiscard]] int shown(int height) const
    {
        return static_cast<int>(std::lround((height + kBodyGap) * m_extent));
    }
    [[nodiscard]] int leastHeight() const
    {
        return m_content ? m_content->minimumSizeHint().expandedTo(m_content->minimumSize()).height() : 0;
    }
    [[nodiscard]] int contentHeight() const
    {
        if (!m_content)
            return 0;
        const int height = m_content->hasHeightForWidth() ? m_content->heightForWidth(width())
                                                          : m_content->sizeHint().height();
        return std::clamp(height, leastHeight(), std::max(leastHeight(), m_content->maximumHeight()));
    }
    void place()
    {
        if (!m_content)
            return;
        const int below = m_extent < 1 ? contentHeight() : std::max(height() - kBodyGap, leastHeight());
        m_content->setGeometry(0, kBodyGap, width(), below);
    }

    QWidget* m_content = nullptr;
    double m_extent = 0;
    bool m_isShrinkable = false;
};

SidebarSection::SidebarSection(const QString& title, const QString& identity, QWidget* parent)
    : QWidget(parent)
    , m_header(new SectionHeader(this))
    , m_headerRow(new QHBoxLayout)
    , m_body(new SectionBody(this))
    , m_extent(new Glide(0, kOpenMilliseconds, this, [this] { showExtent(); }))
{
    setObjectName(identity + u"Section"_s);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    m_header->setObjectName(identity + u"Header"_s);
    m_header->setLabel(title);
    m_header->setIconKey(u"chevron.right"_s);
    m_headerRow->setContentsMargins(0, 0, 0, 0);
    m_headerRow->setSpacing(0);
    m_headerRow->addWidget(m_header, 1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(m_headerRow);
    column->addWidget(m_body);
    m_body->hide();

    connect(m_header, &QAbstractButton::clicked, this, [this] {
        setOpen(!isOpen(), true);
        if (isOpen())
            Q_EMIT opened();
    });
}

void SidebarSection::setBody(QWidget* body) { m_body->setContent(body); }

void SidebarSection::setShrinkable() { m_body->setShrinkable(); }

void SidebarSection::addHeaderButton(QAbstractButton* button)
{
    m_headerRow->addWidget(button);
    m_headerRow->setContentsMargins(0, 0, kButtonInset, 0);
}

void SidebarSection::setCount(const QString& count) { m_header->setCount(count); }

bool SidebarSection::isOpen() const { return m_header->isChecked(); }

QAbstractButton* SidebarSection::header() const { return m_header; }

void SidebarSection::setOpen(bool isOpen, bool isAnimated)
{
    if (isOpen == this->isOpen() && (isAnimated || m_extent->state() == QAbstractAnimation::Stopped))
        return;
    // Move the focus before its widget is hidden.
    if (!isOpen && m_body->isAncestorOf(QApplication::focusWidget()))
        m_header->setFocus();
    m_header->setChecked(isOpen);
    m_header->setIconKey(isOpen ? u"chevron.down"_s : u"chevron.right"_s);
    if (isAnimated)
        m_extent->glideTo(isOpen ? 1 : 0);
    else
        m_extent->jumpTo(isOpen ? 1 : 0);
}

void SidebarSection::showExtent()
{
    m_body->setExtent(m_extent->value());
    m_body->setVisible(m_extent->value() > 0 || isOpen());
}

} // namespace orvanlite
