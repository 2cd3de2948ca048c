#pragma once

#include <QString>
#include <QWidget>

class QLabel;
class QVBoxLayout;

namespace orvanlite {

class OnboardingIllustration;

/// The frame of a page: an illustration above a title and a description.
class OnboardingPageShell : public QWidget {
    Q_OBJECT

public:
    /// Takes ownership of the illustration.
    OnboardingPageShell(const QString& title, const QString& description,
                        OnboardingIllustration* illustration, QWidget* parent);

    void setTexts(const QString& title, const QString& description);
    /// Announces title and description to screen readers, as the focus stays on the buttons.
    void announceTexts();

    /// Adds a widget below the description.
    void addBelow(QWidget* widget);

private:
    QLabel* m_title;
    QLabel* m_description;
    QVBoxLayout* m_column;
};

} // namespace orvanlite
