#pragma once

#include "records/ExportOptions.h"
#include "shell/toolkit/Sheet.h"

class QLabel;

namespace orvanlite {

class PressButton;

/// Lets the user choose the format and sort order of a report. Every choice is written immediately to the two
/// references; accepting the dialog requests the report.
class ExportPicker final : public Sheet {
    Q_OBJECT

public:
    ExportPicker(ExportFormat& format, ExportSortOption& sortOption, QWidget* parent);

    /// Opens the dialog at the size of its content.
    void present();

protected:
    [[nodiscard]] QAbstractButton* mainButton() const override;

private:
    [[nodiscard]] QWidget* makeFormats();
    [[nodiscard]] QWidget* makeSortOptions();
    [[nodiscard]] QWidget* makeButtons();
    void fit();
    void render();

    ExportFormat& m_format;
    ExportSortOption& m_sortOption;
    QLabel* m_caption;
    PressButton* m_export = nullptr;
};

} // namespace orvanlite
