#include "shell/toolkit/FileOpenPanel.h"

#include <QFileDialog>
#include <QFileInfo>

#include <utility>

namespace orvanlite {

using namespace Qt::StringLiterals;

FileOpenPanel::FileOpenPanel(QWidget& context, QString folder)
    : m_context(context)
    , m_folder(std::move(folder))
{}

void FileOpenPanel::ask(const OpenRequest& request, std::function<void(const QString& path)> chosen)
{
    auto* panel = new QFileDialog(m_context.window(), request.title, m_folder);
    panel->setObjectName(u"openPanel"_s);
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setWindowModality(Qt::WindowModal);
    panel->setAcceptMode(QFileDialog::AcceptOpen);
    panel->setFileMode(QFileDialog::ExistingFile);
    panel->setNameFilter(u"%1 (*.%2)"_s.arg(request.typeName, request.suffix));
    QObject::connect(panel, &QFileDialog::fileSelected, &m_context,
                     [this, chosen = std::move(chosen)](const QString& path) {
                         m_folder = QFileInfo(path).path();
                         chosen(path);
                     });
    panel->open();
}

} // namespace orvanlite
