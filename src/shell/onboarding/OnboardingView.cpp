#include "shell/onboarding/OnboardingView.h"

#include "platform/FullDiskAccess.h"
#include "platform/Platform.h"
#include "shell/onboarding/OnboardingAccessPage.h"
#include "shell/onboarding/OnboardingPages.h"
#include "shell/onboarding/PageDots.h"
#include "shell/toolkit/AppTheme.h"
#include "shell/toolkit/Dialogs.h"
#include "shell/toolkit/KeyRepeat.h"
#include "shell/toolkit/Motion.h"
#include "shell/toolkit/PressButton.h"
#include "shell/toolkit/RelativeFont.h"

#include <QHBoxLayout>
#include <QKeyEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

constexpr int kWidth = 560;
constexpr int kRegionHeight = 360;
constexpr int kButtonsX = 32;
constexpr int kButtonsY = 28;
constexpr int kSlideMilliseconds = 250;

} // namespace

OnboardingView::OnboardingView(const platform::Platform& platform, platform::FullDiskAccess& access,
                               QWidget* parent)
    : QDialog(parent)
    , m_region(new QWidget(this))
    , m_dots(new PageDots(pageCount, this))
    , m_slide(new Glide(1, kSlideMilliseconds, this, [this] { placePages(); }))
{
    setObjectName(u"onboardingView"_s);
    setWindowTitle(u"Welcome to Orvanlite"_s);
    makeSheet(this);
    addPages(platform, access);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_region);
    column->addSpacing(AppTheme::kSpace4);
    column->addWidget(m_dots, 0, Qt::AlignHCenter);
    column->addWidget(makeButtons());
    column->setSizeConstraint(QLayout::SetFixedSize);

    connect(m_slide, &QVariantAnimation::finished, this, &OnboardingView::showCurrentPage);
    m_dots->setCurrent(0);
    showCurrentPage();
    renderButtons();
    m_next->setFocus();
    for (QAbstractButton* button : findChildren<QAbstractButton*>())
        button->installEventFilter(this);
    onFontChange(this, [this] { fitRegion(); });
}

void OnboardingView::addPages(const platform::Platform& platform, platform::FullDiskAccess& access)
{
    const auto add = [this](const QString& title, const QString& description,
                            OnboardingIllustration* illustration) {
        m_pages.push_back(new OnboardingPageShell(title, description, illustration, m_region));
    };
    add(u"Welcome to Orvanlite"_s,
        u"The all-in-one audio plugin manager for macOS. Scan, organize, and control every AU, VST, VST3, AAX, and CLAP "
        "plugin on your system."_s,
        new OnboardingPage0(nullptr));
    add(u"Enable & Disable Plugins"_s,
        u"Toggle any plugin on or off without uninstalling it. Disabled plugins are moved to a safe folder — bring them "
        "back any time."_s,
        new OnboardingPage1(nullptr));
    add(u"Profiles"_s,
        u"Save your plugin setup as a profile. Switch instantly between configurations for mixing, mastering, or "
        "different sessions."_s,
        new OnboardingPage2(nullptr));
    add(u"Select Mode"_s,
        u"Tap \"Select\" to enter Select Mode. Choose one or more plugins, then press Enter to add them to the bulk "
        "action panel — enable, disable, or delete them all at once."_s,
        new OnboardingPage3(nullptr));
    add(u"You're in Control"_s,
        u"Nothing is permanently deleted unless you choose it. Orvanlite just moves files — your plugins are always safe "
        "and recoverable."_s,
        new OnboardingPage4(nullptr));
    m_pages.push_back(new OnboardingAccessPage(platform, access, m_region));
    for (OnboardingPageShell* page : m_pages)
        page->hide();
    fitRegion();
}

void OnboardingView::fitRegion()
{
    // Large fonts need more than the usual height; all pages share the largest.
    int height = kRegionHeight;
    for (const OnboardingPageShell* page : m_pages)
        height = std::max(height, page->layout()->heightForWidth(kWidth));
    m_region->setFixedSize(kWidth, height);
}

QWidget* OnboardingView::makeButtons()
{
    auto* buttons = new QWidget(this);
    const auto add = [&](const QString& text, const QString& iconKey, const QString& name) {
        auto* button = new PressButton(text, iconKey, PressButton::Ground::bordered, buttons);
        button->setObjectName(name);
        return button;
    };
    m_back = add(u"Back"_s, u"arrow.left"_s, u"onboardingBackButton"_s);
    m_next = add(u"Next"_s, {}, u"onboardingNextButton"_s);
    m_start = add(u"Get Started"_s, {}, u"onboardingStartButton"_s);
    for (PressButton* main : {m_next, m_start})
        main->setTint(&AppTheme::blue);
    connect(m_back, &QAbstractButton::clicked, this, [this] { turnTo(m_currentPage - 1); });
    connect(m_next, &QAbstractButton::clicked, this, [this] { turnTo(m_currentPage + 1); });
    connect(m_start, &QAbstractButton::clicked, this, &QDialog::accept);
    auto* row = new QHBoxLayout(buttons);
    row->setContentsMargins(kButtonsX, kButtonsY, kButtonsX, kButtonsY);
    row->addWidget(m_back);
    row->addStretch(1);
    row->addWidget(m_next);
    row->addWidget(m_start);
    return buttons;
}

void OnboardingView::turnTo(int page)
{
    if (page < 0 || page >= pageCount)
        return;
    m_slide->stop();
    showCurrentPage();
    m_previousPage = std::exchange(m_currentPage, page);
    m_dots->setCurrent(page);
    renderButtons();
    OnboardingPageShell* shown = m_pages[static_cast<std::size_t>(page)];
    shown->show();
    m_slide->glideFrom(0, 1);
    if (m_slide->state() == QAbstractAnimation::Stopped)
        showCurrentPage();
    shown->announceTexts(); // showing the page may have changed them
}

void OnboardingView::placePages()
{
    const int width = m_region->width();
    const int direction = m_currentPage > m_previousPage ? 1 : -1;
    const int way = static_cast<int>(std::lround(width * m_slide->value())) * direction;
    const QSize size = m_region->size();
    m_pages[static_cast<std::size_t>(m_previousPage)]->setGeometry(QRect(QPoint(-way, 0), size));
    m_pages[static_cast<std::size_t>(m_currentPage)]->setGeometry(
        QRect(QPoint(direction * width - way, 0), size));
}

void OnboardingView::showCurrentPage()
{
    for (std::size_t i = 0; i < m_pages.size(); ++i) {
        const bool isCurrent = static_cast<int>(i) == m_currentPage;
        m_pages[i]->setGeometry(m_region->rect());
        m_pages[i]->setVisible(isCurrent);
    }
}

void OnboardingView::renderButtons()
{
    const bool isLast = m_currentPage == pageCount - 1;
    PressButton* forward = isLast ? m_start : m_next;
    const bool wasOnButton = m_back->hasFocus() || m_next->hasFocus() || m_start->hasFocus();
    forward->show();
    const bool losesFocus = (m_back->hasFocus() && m_currentPage == 0) || (!isLast && m_start->hasFocus()) ||
                            (isLast && m_next->hasFocus());
    if (wasOnButton && losesFocus)
        forward->setFocus(Qt::TabFocusReason);
    m_back->setVisible(m_currentPage >= 1);
    m_next->setVisible(!isLast);
    m_start->setVisible(isLast);
}

bool OnboardingView::actOn(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Left:
        turnTo(m_currentPage - 1);
        return true;
    case Qt::Key_Right:
        turnTo(m_currentPage + 1);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter: {
        // The focused button, otherwise "Next" or the start button.
        auto* button = qobject_cast<QAbstractButton*>(focusWidget());
        if (!button || !button->isVisible())
            button = m_currentPage == pageCount - 1 ? m_start : m_next;
        if (!KeyRepeat::isRepeat(event))
            button->click();
        return true;
    }
    default:
        return false;
    }
}

bool OnboardingView::eventFilter(QObject* watched, QEvent* event)
{
    return (event->type() == QEvent::KeyPress && actOn(*static_cast<QKeyEvent*>(event))) ||
           QDialog::eventFilter(watched, event);
}

void OnboardingView::keyPressEvent(QKeyEvent* event)
{
    if (!actOn(*event))
        QDialog::keyPressEvent(event);
}

void OnboardingView::resizeEvent(QResizeEvent* event)
{
    QDialog::resizeEvent(event);
    if (m_slide->state() != QAbstractAnimation::Running)
        showCurrentPage();
}

} // namespace orvanlite
