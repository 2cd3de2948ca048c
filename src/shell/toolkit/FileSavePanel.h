#pragma once

#include "records/SavePanel.h"

class QWidget;

namespace orvanlite {

/// The system's save panel over the window of `context`. It starts in the folder of the last saved file.
class FileSavePanel final : public SavePanel {
public:
    FileSavePanel(QWidget& context, QString folder);

    void ask(const SaveRequest& request, std::function<void(const QString& path)> chosen) override;

private:
    void confirm(const QString& path, const SaveRequest& request,
                 const std::function<void(const QString& path)>& chosen);

    QWidget& m_context;
    QString m_folder;
};

} // namespace orvanlite
