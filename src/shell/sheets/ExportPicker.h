#pragma once

#include "records/ExportOptions.h"

#include <QDialog>

class QLabel;

namespace orvanlite {

class PressButton;

/// Where the user picks the format of a report and what it is sorted by. Every pick is kept at once, by whoever owns
/// the two; accepted, the report is wanted.
class ExportPicker final : public QDialog {
    Q_OBJECT

public:
    ExportPicker(ExportFormat& format, ExportSortOption& sortOption, QWidget* parent);

    /// Opens it at the size of its content.
    void present();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] QWidget* makeFormats();
    [[nodiscard]] QWidget* makeSortOptions();
    [[nodiscard]] QWidget* makeButtons();
    void render();

    ExportFormat& m_format;
    ExportSortOption& m_sortOption;
    QLabel* m_caption;
    PressButton* m_export = nullptr;
};

} // namespace orvanlite
