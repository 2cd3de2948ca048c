#include "shell/table/SearchBar.h"

#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Icons.h"
#include "shell/toolkit/PressButton.h"
#include "shell/toolkit/RelativeFont.h"
#include "shell/toolkit/ViewUpdater.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QShortcut>
#include <QSignalBlocker>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kIconSlot = 20;
constexpr int kIconSize = 16;
constexpr int kPaddingX = 16;
constexpr int kPaddingY = 12;
constexpr int kSpacing = 12;
constexpr double kCornerRadius = 10;

} // namespace

SearchBar::SearchBar(Observable<QString>& searchText, QWidget* parent)
    : QWidget(parent)
    , m_searchText(searchText)
    , m_field(new QLineEdit(this))
    , m_clear(new PressButton(u"Clear"_s, {}, PressButton::Ground::none, this))
    , m_updates(new ViewUpdater([this] { render(); }, this))
{
    setObjectName(u"searchBar"_s);
    m_field->setObjectName(u"searchField"_s);
    m_field->setAccessibleName(u"Search plugins"_s);
    m_field->setPlaceholderText(u"Search plugins..."_s);
    m_field->setFrame(false);
    // Set a single role; all others keep following the application palette.
    QPalette seeThrough;
    seeThrough.setBrush(QPalette::Base, Qt::transparent);
    m_field->setPalette(seeThrough);
    m_field->installEventFilter(this);
    m_clear->setObjectName(u"clearSearchButton"_s);
    m_clear->setAccessibleName(u"Clear search"_s);
    setRelativeFont(m_clear, AppTheme::kCaption);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(kPaddingX + kIconSlot + kSpacing, kPaddingY, kPaddingX, kPaddingY);
    row->setSpacing(kSpacing);
    row->addWidget(m_field, 1);
    row->addWidget(m_clear);
    // The button is taller than the text and must not change the height of the field when it appears.
    m_clear->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);

    // Not textEdited(): assistive technology and scripts set the text without an edit.
    connect(m_field, &QLineEdit::textChanged, this, [this](const QString& text) { m_searchText = text; });
    connect(m_clear, &QAbstractButton::clicked, this, [this] {
        m_searchText = QString();
        m_field->setFocus();
    });
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this, &SearchBar::focusField);
    m_field->setToolTip(
        u"Search (%1)"_s.arg(QKeySequence(QKeySequence::Find).toString(QKeySequence::NativeText)));
    setCursor(Qt::IBeamCursor);
    m_clear->setCursor(Qt::ArrowCursor);
    m_updates->watch(m_searchText);
    render();
}

void SearchBar::focusField()
{
    m_field->setFocus(Qt::ShortcutFocusReason);
    m_field->selectAll();
}

void SearchBar::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        m_field->setFocus(Qt::MouseFocusReason);
}

void SearchBar::render()
{
    if (m_field->text() != *m_searchText) {
        const QSignalBlocker quiet(m_field);
        m_field->setText(*m_searchText);
    }
    m_clear->setVisible(!m_searchText->isEmpty());
}

QSize SearchBar::minimumSizeHint() const { return {220, QWidget::minimumSizeHint().height()}; }

bool SearchBar::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        update();
    return QWidget::eventFilter(watched, event);
}

void SearchBar::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    liquidGlassCard(painter, rect(), kCornerRadius, palette());
    if (m_field->hasFocus()) {
        painter.setPen(QPen(AppTheme::withOpacity(AppTheme::accent(palette()), 0.7), 2));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), kCornerRadius, kCornerRadius);
    }
    const QRectF icon(kPaddingX + (kIconSlot - kIconSize) / 2.0, (height() - kIconSize) / 2.0, kIconSize,
                      kIconSize);
    drawIcon(painter, icon, u"magnifyingglass"_s, AppTheme::secondary(palette()));
}

} // namespace orvanlite
