#pragma once

#include "model/Observable.h"

#include <QWidget>

class QLineEdit;

namespace orvanlite {

class PressButton;
class ViewUpdater;

/// The search field: an icon, the text, and a "Clear" button while there is text. Two-way binding to
/// `searchText`. The standard key for "Find" goes to it.
class SearchBar final : public QWidget {
    Q_OBJECT

public:
    SearchBar(Observable<QString>& searchText, QWidget* parent);

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    /// A click beside the text.
    void mousePressEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void render();
    void focusField();

    Observable<QString>& m_searchText;
    QLineEdit* m_field;
    PressButton* m_clear;
    ViewUpdater* m_updates;
};

} // namespace orvanlite
