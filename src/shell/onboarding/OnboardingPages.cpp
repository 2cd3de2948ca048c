#include "shell/onboarding/OnboardingPages.h"

#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Icons.h"
#include "shell/toolkit/SwitchPainting.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr double kRadius = 8;
constexpr double kPi = std::numbers::pi;

struct SamplePlugin {
    QString name;
    QString format;
};

/// Smoothstep from 0 to 1, from `start` on for `length` seconds.
double eased(double seconds, double start, double length)
{
    const double share = std::clamp((seconds - start) / length, 0.0, 1.0);
    return share * share * (3 - 2 * share);
}

void write(QPainter& painter, const QRectF& rect, const QString& text, const QColor& colour, double size,
           QFont::Weight weight = QFont::Normal, Qt::Alignment side = Qt::AlignLeft)
{
    QFont font = painter.font();
    font.setPixelSize(static_cast<int>(size));
    font.setWeight(weight);
    painter.setFont(font);
    painter.setPen(colour);
    painter.drawText(rect, int(side | Qt::AlignVCenter) | Qt::TextSingleLine,
                     QFontMetricsF(font).elidedText(text, Qt::ElideRight, rect.width()));
}

void icon(QPainter& painter, const QPointF& middle, double size, const QString& key, const QColor& colour)
{
    drawIcon(painter, QRectF(middle.x() - size / 2, middle.y() - size / 2, size, size), key, colour);
}

void badge(QPainter& painter, const QRectF& rect, const QString& text, const QPalette& colours)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(AppTheme::withOpacity(AppTheme::accent(colours), 0.12));
    painter.drawRoundedRect(rect, 4, 4);
    write(painter, rect, text, AppTheme::primary(colours), 11, QFont::Medium, Qt::AlignHCenter);
}

/// Rectangle of a row in a column centred on the origin.
QRectF rowRect(int row, int rows, double width, double height, double gap)
{
    const double all = rows * height + (rows - 1) * gap;
    return {-width / 2, -all / 2 + row * (height + gap), width, height};
}

} // namespace

void OnboardingPage0::draw(QPainter& painter, double seconds) const
{
    constexpr int kBarCount = 13;
    constexpr double kWidth = 14;
    constexpr double kGap = 12;
    const std::array colours{AppTheme::accentPurple(), AppTheme::accentBlue(), AppTheme::accentPink()};
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < kBarCount; ++i) {
        const double wave =
            0.5 + 0.5 * std::sin(2.1 * seconds + 0.9 * i) * std::cos(1.3 * seconds - 0.35 * i);
        const double height = 26 + 122 * wave * (1 - std::abs(i - kBarCount / 2) / 11.0);
        const double x = (i - (kBarCount - 1) / 2.0) * (kWidth + kGap);
        painter.setBrush(colours[static_cast<std::size_t>(i) % colours.size()]);
        painter.drawRoundedRect(QRectF(x - kWidth / 2, -height / 2, kWidth, height), kWidth / 2, kWidth / 2);
    }
}

void OnboardingPage1::draw(QPainter& painter, double seconds) const
{
    static const std::array plugins{SamplePlugin{u"Reverb X Pro"_s, u"AU"_s},
                                    SamplePlugin{u"Vintage EQ"_s, u"VST3"_s},
                                    SamplePlugin{u"Compressor II"_s, u"AAX"_s}};
    constexpr std::array startsOn{true, false, true};
    constexpr double kTurn = 1.4; ///< seconds per row
    const int turn = static_cast<int>(seconds / kTurn);
    const int highlighted = turn % 3;
    const double inTurn = seconds - turn * kTurn;
    const QPalette& colours = palette();
    for (int row = 0; row < 3; ++row) {
        const QRectF place = rowRect(row, 3, 380, 46, 8);
        const double mark = row == highlighted ? eased(inTurn, 0, 0.25) : 0;
        liquidGlassCard(painter, place, kRadius, colours);
        if (mark > 0)
            liquidGlassTinted(painter, place, AppTheme::withOpacity(AppTheme::accentBlue(), mark), kRadius,
                              colours);
        icon(painter, {place.left() + 24, place.center().y()}, 18, u"puzzlepiece.extension.fill"_s,
             AppTheme::secondary(colours));
        const auto& plugin = plugins[static_cast<std::size_t>(row)];
        write(painter, place.adjusted(46, 0, -150, 0), plugin.name, AppTheme::primary(colours), 14,
              QFont::Medium);
        badge(painter, {place.right() - 128, place.center().y() - 10, 52, 20}, plugin.format, colours);
        // Each turn toggles the switch once.
        const int flips = (turn - row + 2) / 3;
        const bool wasOn = startsOn[static_cast<std::size_t>(row)] != (flips % 2 == 1);
        const double slide = row == highlighted ? eased(inTurn, 0.55, 0.2) : 0;
        drawSwitch(painter, {place.right() - 54, place.center().y() - 10, 36, 20}, wasOn ? 1 - slide : slide,
                   colours);
    }
    const double from = rowRect((highlighted + 2) % 3, 3, 380, 46, 8).center().y();
    const double to = rowRect(highlighted, 3, 380, 46, 8).center().y();
    const double y = turn == 0 ? to : from + (to - from) * eased(inTurn, 0, 0.35);
    icon(painter, {-208, y}, 18, u"arrow.right"_s, AppTheme::accent(colours));
}

void OnboardingPage2::draw(QPainter& painter, double seconds) const
{
    struct Card {
        QString name;
        QString iconKey;
        QColor colour;
        std::array<QString, 3> plugins;
    };
    static const std::array profiles{Card{u"Mixing Session"_s,
                                          u"slider.horizontal.3"_s,
                                          AppTheme::accentBlue(),
                                          {u"Reverb X Pro"_s, u"Vintage EQ"_s, u"Bus Compressor"_s}},
                                     Card{u"Mastering"_s,
                                          u"waveform.badge.magnifyingglass"_s,
                                          AppTheme::accentPink(),
                                          {u"Limiter 6"_s, u"Mid-Side EQ"_s, u"Tape Saturator"_s}}};
    constexpr double kTurn = 2.4;
    const int active = static_cast<int>(seconds / kTurn) % 2;
    const double change = seconds < kTurn ? 1 : eased(std::fmod(seconds, kTurn), 0, 0.35);
    const QPalette& colours = palette();
    for (int i = 0; i < 2; ++i) {
        const Card& card = profiles[static_cast<std::size_t>(i)];
        const double spotlight = i == active ? change : 1 - change;
        const QRectF place(i == 0 ? -208 : 8, -84, 200, 168);
        painter.save();
        painter.setOpacity(0.6 + 0.4 * spotlight);
        liquidGlassCard(painter, place, 12, colours);
        liquidGlassTinted(painter, place, AppTheme::withOpacity(card.colour, spotlight), 12, colours);
        const QColor ink = AppTheme::legible(card.colour, colours);
        icon(painter, place.topLeft() + QPointF(26, 30), 20, card.iconKey, ink);
        write(painter, {place.left() + 46, place.top() + 18, 146, 24}, card.name, AppTheme::primary(colours),
              14, QFont::DemiBold);
        for (std::size_t k = 0; k < card.plugins.size(); ++k)
            write(painter, {place.left() + 18, place.top() + 52 + 22.0 * double(k), 170, 20}, card.plugins[k],
                  AppTheme::secondary(colours), 12);
        painter.setOpacity(spotlight);
        icon(painter, place.bottomLeft() + QPointF(25, -22), 14, u"checkmark.circle.fill"_s, ink);
        write(painter, {place.left() + 38, place.bottom() - 33, 120, 22}, u"Active"_s, ink, 12,
              QFont::DemiBold);
        painter.restore();
    }
}

void OnboardingPage3::draw(QPainter& painter, double seconds) const
{
    static const std::array plugins{
        SamplePlugin{u"Reverb X Pro"_s, u"AU"_s}, SamplePlugin{u"Vintage EQ"_s, u"VST3"_s},
        SamplePlugin{u"Compressor II"_s, u"AAX"_s}, SamplePlugin{u"Limiter 6"_s, u"VST3"_s}};
    constexpr double kRound = 5.6;
    constexpr double kTick = 0.5;
    const double now = std::fmod(seconds, kRound);
    const int ticked = std::clamp(static_cast<int>((now - 0.4) / kTick) + (now > 0.4 ? 1 : 0), 0, 4);
    const QPalette& colours = palette();
    for (int row = 0; row < 4; ++row) {
        const QRectF place = rowRect(row, 4, 360, 28, 5).translated(0, -24);
        const bool isOn = row < ticked;
        liquidGlassCard(painter, place, 6, colours);
        const QRectF box(place.left() + 10, place.center().y() - 8, 16, 16);
        painter.setPen(isOn ? QPen(Qt::NoPen)
                            : QPen(AppTheme::withOpacity(AppTheme::secondary(colours), 0.7), 1.4));
        painter.setBrush(isOn ? QBrush(AppTheme::accent(colours)) : QBrush(Qt::NoBrush));
        painter.drawRoundedRect(box, 4, 4);
        if (isOn)
            icon(painter, box.center(), 12, u"checkmark"_s, Qt::white);
        const auto& plugin = plugins[static_cast<std::size_t>(row)];
        write(painter, place.adjusted(38, 0, -80, 0), plugin.name, AppTheme::primary(colours), 13);
        badge(painter, {place.right() - 58, place.center().y() - 9, 48, 18}, plugin.format, colours);
    }
    const double bar = eased(now, 2.5, 0.3);
    painter.setOpacity(bar);
    const QRectF place(-180, 52 + 14 * (1 - bar), 360, 34);
    liquidGlassTinted(painter, place, AppTheme::accentBlue(), kRadius, colours);
    icon(painter, {place.left() + 20, place.center().y()}, 16, u"checkmark.square.fill"_s,
         AppTheme::accent(colours));
    write(painter, place.adjusted(36, 0, -170, 0), u"%1 selected"_s.arg(ticked), AppTheme::primary(colours),
          13, QFont::Medium);
    const double flash = eased(now, 4, 0.15) * (1 - eased(now, 4.2, 0.4));
    const auto button = [&](double left, const QString& text, const QColor& colour, double pressed) {
        const QRectF rect(place.right() - left, place.top() + 6, 70, 22);
        liquidGlassTinted(painter, rect, colour, 5, colours);
        painter.setPen(Qt::NoPen);
        painter.setBrush(AppTheme::withOpacity(colour, 0.5 * pressed));
        painter.drawRoundedRect(rect, 5, 5);
        write(painter, rect, text, AppTheme::legible(colour, colours), 12, QFont::Medium, Qt::AlignHCenter);
    };
    button(154, u"Enable"_s, AppTheme::green(colours), 0);
    button(78, u"Disable"_s, AppTheme::orange(colours), flash);
}

void OnboardingPage4::draw(QPainter& painter, double seconds) const
{
    constexpr double kRound = 3.6;
    const double now = std::fmod(seconds, kRound);
    const double way = eased(now, 0.5, 1.2);
    const QPalette& colours = palette();
    const double pulse = std::fmod(now, 1.8) / 1.8;
    painter.setPen(QPen(AppTheme::withOpacity(AppTheme::green(colours), 0.5 * (1 - pulse)), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(QPointF(0, -26), 26 + 22 * pulse, 26 + 22 * pulse);
    icon(painter, {0, -26}, 44, u"checkmark.shield.fill"_s, AppTheme::green(colours));
    icon(painter, {0, 48}, 26, u"arrow.right"_s, AppTheme::secondary(colours));
    icon(painter, {130, 44}, 64, u"folder.fill.badge.checkmark"_s, AppTheme::accentBlue());
    painter.setOpacity(1 - eased(now, 1.4, 0.35) * (1 - eased(now, kRound - 0.3, 0.3)));
    icon(painter, {-130 + 240 * way * (1 - eased(now, kRound - 0.3, 0.01)), 44}, 46, u"doc.fill"_s,
         AppTheme::accentPurple());
}

void OnboardingPage5::setHasAccess(bool hasAccess, bool growsIn)
{
    m_hasAccess = hasAccess;
    if (hasAccess && growsIn && isRunning())
        m_growing.start();
    else
        m_growing.invalidate();
    update();
}

void OnboardingPage5::draw(QPainter& painter, double seconds) const
{
    constexpr double kLargestGlow = 1.12;
    const QPalette& colours = palette();
    const QColor colour = m_hasAccess ? AppTheme::green(colours) : AppTheme::accentBlue();
    const double glow = 1 + (kLargestGlow - 1) * (0.5 - 0.5 * std::cos(kPi * seconds / 0.9));
    painter.setPen(Qt::NoPen);
    for (const double ring : {1.0, 0.78}) {
        painter.setBrush(AppTheme::withOpacity(colour, 0.12));
        painter.drawEllipse(QPointF(0, 0), 76 * ring * glow, 76 * ring * glow);
    }
    constexpr double kGrowSeconds = 0.4;
    const double grown =
        m_growing.isValid() ? eased(double(m_growing.elapsed()) / 1000, 0, kGrowSeconds) : 1.0;
    painter.setOpacity(grown);
    icon(painter, {0, 0}, 72 * (0.5 + 0.5 * grown),
         m_hasAccess ? u"checkmark.shield.fill"_s : u"lock.shield"_s, AppTheme::legible(colour, colours));
}

} // namespace orvanlite
