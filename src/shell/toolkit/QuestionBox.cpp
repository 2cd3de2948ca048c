#include "shell/toolkit/QuestionBox.h"

#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/FocusRing.h"
#include "shell/toolkit/KeyRepeat.h"
#include "shell/toolkit/RelativeFont.h"
#include "shell/toolkit/ThinScrollBar.h"
#include "shell/toolkit/TintedLabel.h"
#include "shell/toolkit/ToolTips.h"

#include <QAccessibleWidget>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QTextBoundaryFinder>

#include <algorithm>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kIconSize = 40;
constexpr int kNarrowest = 320;
constexpr int kCharacters = 56; ///< of average width in a line of the message
constexpr int kMostLines = 14;  ///< of the message without scrolling
constexpr int kTitleBar = 40;
constexpr int kMargin = 40; ///< around the box on a small screen
constexpr int kCardPadding = 8;
constexpr double kCardRadius = 8;

/// The text with each word that is wider than a line elided in the middle.
QString withElidedWords(const QString& text, const QFontMetrics& metrics, int width)
{
    QString shown;
    QTextBoundaryFinder breaks(QTextBoundaryFinder::Line, text);
    for (qsizetype start = 0; start < text.size();) {
        const qsizetype next = breaks.toNextBoundary();
        const QString piece = text.mid(start, (next < 0 ? text.size() : next) - start);
        const QString word = piece.trimmed();
        QString shownPiece = piece;
        if (metrics.horizontalAdvance(word) > width)
            shownPiece.replace(word, metrics.elidedText(word, Qt::ElideMiddle, width));
        shown += shownPiece;
        start += piece.size();
    }
    return shown;
}

/// Assistive technology reads the content of an alert when it opens.
QAccessibleInterface* makeAccessible(const QString& className, QObject* object)
{
    if (className != QLatin1StringView(QuestionBox::staticMetaObject.className()))
        return nullptr;
    return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::AlertMessage);
}

} // namespace

/// Wrapped plain text of a given width. Assistive technology reads the full text.
class WrappedLabel final : public QLabel {
public:
    WrappedLabel(QString text, const QString& objectName, QWidget* parent)
        : QLabel(parent)
        , m_text(std::move(text))
    {
        setObjectName(objectName);
        setTextFormat(Qt::PlainText);
        setAlignment(Qt::AlignLeft | Qt::AlignTop);
        setWordWrap(true);
        setAccessibleName(m_text);
    }
    [[nodiscard]] const QString& fullText() const { return m_text; }
    void fit(int width)
    {
        const QString shown = withElidedWords(m_text, fontMetrics(), width);
        setText(shown);
        setToolTip(shown == m_text ? QString() : plainToolTip(m_text));
        setFixedSize(width, m_text.isEmpty() ? 0 : heightForWidth(width));
    }

private:
    QString m_text;
};

/// Shows the message; on a card, and focusable, if it is higher than the limit.
class MessageArea final : public QScrollArea {
public:
    MessageArea(WrappedLabel* message, QWidget* parent)
        : QScrollArea(parent)
        , m_message(*message)
    {
        setObjectName(u"questionScrollArea"_s);
        setAccessibleName(u"Message"_s);
        setFrameShape(QFrame::NoFrame);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setVerticalScrollBar(new ThinScrollBar(Qt::Vertical, this));
        setWidget(message);
        for (QWidget* seeThrough : {viewport(), static_cast<QWidget*>(message)})
            seeThrough->setAutoFillBackground(false);
    }
    void fit(int width, int limit)
    {
        m_message.fit(width);
        m_scrolls = m_message.height() > limit;
        const int padding = m_scrolls ? kCardPadding : 0;
        setViewportMargins(padding, padding, 0, padding);
        if (m_scrolls)
            m_message.fit(width - 2 * padding - verticalScrollBar()->sizeHint().width());
        setFixedSize(width, m_scrolls ? limit : m_message.height());
        setFocusPolicy(m_scrolls ? Qt::StrongFocus : Qt::NoFocus);
        setVisible(!m_message.fullText().isEmpty());
    }

protected:
    bool event(QEvent* event) override
    {
        const bool isDone = QScrollArea::event(event);
        if (event->type() == QEvent::Paint && m_scrolls) {
            QPainter painter(this);
            liquidGlassCard(painter, rect(), kCardRadius, palette());
            if (hasFocus()) {
                painter.setRenderHint(QPainter::Antialiasing);
                drawFocusRing(painter, QRectF(rect()).adjusted(1, 1, -1, -1), kCardRadius,
                              AppTheme::accent(palette()));
            }
        }
        return isDone;
    }

private:
    WrappedLabel& m_message;
    bool m_scrolls = false;
};

QuestionBox::QuestionBox(const QString& iconKey, QColor (*tint)(const QPalette&), const QString& heading,
                         const QString& message, QWidget* parent)
    : QDialog(parent)
    , m_heading(new WrappedLabel(heading, u"questionHeading"_s, this))
    , m_message(new WrappedLabel(message, u"questionMessage"_s, this))
    , m_scrolling(new MessageArea(m_message, this))
    , m_buttons(new QDialogButtonBox(this))
{
    static const bool isInstalled = (QAccessible::installFactory(makeAccessible), true);
    Q_UNUSED(isInstalled)
    setRelativeFont(m_heading, 1, QFont::DemiBold);
    auto* icon = new TintedLabel({}, tint, this);
    icon->setIcon(iconKey, kIconSize);
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(AppTheme::kSpace5, AppTheme::kSpace5, AppTheme::kSpace5, AppTheme::kSpace4);
    grid->setHorizontalSpacing(AppTheme::kSpace4);
    grid->setVerticalSpacing(AppTheme::kSpace2);
    grid->addWidget(icon, 0, 0, 2, 1, Qt::AlignTop);
    grid->addWidget(m_heading, 0, 1);
    grid->addWidget(m_scrolling, 1, 1);
    grid->setRowMinimumHeight(2, AppTheme::kSpace2);
    grid->addWidget(m_buttons, 3, 0, 1, 2);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    onFontChange(this, [this] { fit(); });
}

void QuestionBox::addButton(QPushButton* button, QDialogButtonBox::ButtonRole role)
{
    m_buttons->addButton(button, role);
    fit();
}

void QuestionBox::setDefaultButton(QPushButton* button)
{
    button->setDefault(true);
    button->setFocus();
}

void QuestionBox::fit()
{
    const QSize room = parentWidget()->screen()->availableSize() - QSize(kMargin, kMargin + kTitleBar);
    const int aside = layout()->contentsMargins().left() + layout()->contentsMargins().right() + kIconSize +
                      AppTheme::kSpace4;
    const int width =
        std::min(std::max(kNarrowest, kCharacters * fontMetrics().averageCharWidth()), room.width() - aside);
    m_heading->fit(width);
    const int line = m_message->fontMetrics().lineSpacing();
    m_scrolling->fit(width, kMostLines * line);
    const int excess = layout()->totalMinimumSize().height() - room.height();
    if (excess > 0)
        m_scrolling->fit(width, std::max(line, m_scrolling->height() - excess));
}

void QuestionBox::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void QuestionBox::keyPressEvent(QKeyEvent* event)
{
    QScrollBar* bar = m_scrolling->verticalScrollBar();
    if (event->matches(QKeySequence::Copy))
        QGuiApplication::clipboard()->setText(heading() + u"\n\n"_s + message());
    else if (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown)
        bar->triggerAction(event->key() == Qt::Key_PageUp ? QScrollBar::SliderPageStepSub
                                                          : QScrollBar::SliderPageStepAdd);
    else if (!KeyRepeat::isRepeat(*event)) // a held Return does not answer
        QDialog::keyPressEvent(event);
}

const QString& QuestionBox::heading() const { return m_heading->fullText(); }

const QString& QuestionBox::message() const { return m_message->fullText(); }

} // namespace orvanlite
