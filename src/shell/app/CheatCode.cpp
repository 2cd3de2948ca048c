#include "shell/app/CheatCode.h"

#include "operations/Detach.h"
#include "platform/Clock.h"
#include "shell/toolkit/KeyRepeat.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QTextBoundaryFinder>

#include <chrono>
#include <utility>

namespace orvanlite {

namespace {

constexpr std::chrono::milliseconds kListensFor{10'000};

QCoro::Task<> disarmLater(QPointer<CheatCode> code, platform::Clock* clock)
{
    co_await clock->sleepFor(kListensFor);
    if (code && code->cheatCodeArmed())
        code->disarmCheatCode();
}

/// Whether the text is a single grapheme that is a letter or digit.
bool isLetterOrNumber(const QString& text)
{
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, text);
    if (characters.toNextBoundary() != text.size())
        return false;
    const char32_t first = text.toUcs4().value(0);
    return QChar::isLetter(first) || QChar::isNumber(first);
}

} // namespace

CheatCode::CheatCode(platform::Clock& clock, std::function<void()> matched, QObject* parent)
    : QObject(parent)
    , m_clock(clock)
    , m_matched(std::move(matched))
{}

void CheatCode::armCheatCode()
{
    m_typed.clear();
    if (!std::exchange(m_isArmed, true))
        QCoreApplication::instance()->installEventFilter(this);
    // On purpose: an earlier timer is not cancelled and may end this period early.
    detach(disarmLater(this, &m_clock));
}

void CheatCode::disarmCheatCode()
{
    m_typed.clear();
    if (std::exchange(m_isArmed, false))
        QCoreApplication::instance()->removeEventFilter(this);
}

bool CheatCode::completes(const QString& text)
{
    if (!isLetterOrNumber(text))
        return false;
    m_typed.append(text);
    if (m_typed.size() > uadCheatCode.size())
        m_typed.removeFirst();
    return cheatCodeBuffer() == uadCheatCode;
}

bool CheatCode::eventFilter(QObject* watched, QEvent* event)
{
    keepFirst(*this, *event);
    // Every key press is seen several times: for the window, the focused widget and its parents, and again as
    // the copy that the accessibility bridge posts.
    if (event->type() != QEvent::KeyPress || !watched->isWindowType() || !event->spontaneous() ||
        !completes(static_cast<QKeyEvent*>(event)->text().toLower()))
        return false;
    disarmCheatCode();
    m_matched();
    return true;
}

} // namespace orvanlite
