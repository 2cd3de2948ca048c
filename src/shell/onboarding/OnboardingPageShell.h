#pragma once

#include <QString>
#include <QWidget>

class QLabel;
class QVBoxLayout;

namespace orvanlite {

class OnboardingIllustration;

/// The frame of a page: its illustration over a title and a description.
class OnboardingPageShell : public QWidget {
    Q_OBJECT

public:
    /// Takes the illustration as a child.
    OnboardingPageShell(const QString& title, const QString& description,
                        OnboardingIllustration* illustration, QWidget* parent);

    void setTexts(const QString& title, const QString& description);
    /// Has a screen reader say what the page says: the focus stays on the buttons below it.
    void announceTexts();

    /// Puts a widget below the description.
    void addBelow(QWidget* widget);

private:
    QLabel* m_title;
    QLabel* m_description;
    QVBoxLayout* m_column;
};

} // namespace orvanlite
