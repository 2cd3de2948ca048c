#pragma once

#include <QDialog>

#include <vector>

namespace orvanlite::platform {
class FullDiskAccess;
struct Platform;
} // namespace orvanlite::platform

namespace orvanlite {

class Glide;
class OnboardingPageShell;
class PageDots;
class PressButton;

/// The sheet of the first start: six pages that explain the product and ask for the one permission. However
/// it is closed, the onboarding is finished.
class OnboardingView final : public QDialog {
    Q_OBJECT

public:
    static constexpr int pageCount = 6;

    OnboardingView(const platform::Platform& platform, platform::FullDiskAccess& access, QWidget* parent);

    [[nodiscard]] int currentPage() const { return m_currentPage; }

protected:
    /// Catches the arrow keys, with which the buttons would move the focus between themselves.
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void addPages(const platform::Platform& platform, platform::FullDiskAccess& access);
    void fitRegion();
    [[nodiscard]] QWidget* makeButtons();
    void turnTo(int page);
    /// Returns true if the key was handled.
    bool actOn(const QKeyEvent& event);
    void placePages();
    void showCurrentPage();
    void renderButtons();

    int m_currentPage = 0;
    int m_previousPage = 0;
    QWidget* m_region;
    std::vector<OnboardingPageShell*> m_pages;
    PageDots* m_dots;
    PressButton* m_back = nullptr;
    PressButton* m_next = nullptr;
    PressButton* m_start = nullptr;
    Glide* m_slide;
};

} // namespace orvanlite
