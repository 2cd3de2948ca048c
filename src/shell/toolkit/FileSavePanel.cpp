#include "shell/toolkit/FileSavePanel.h"

#include "shell/toolkit/Dialogs.h"

#include <QAbstractButton>
#include <QFileDialog>
#include <QFileInfo>
#include <QTextBoundaryFinder>

#include <utility>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

/// A dot inside a name, as in "Mix 1.2", does not start a suffix.
QString withSuffix(const QString& name, const QString& suffix)
{
    const QString ending = u'.' + suffix;
    return name.endsWith(ending, Qt::CaseInsensitive) ? name : name + ending;
}

/// A valid file name. File systems limit names to 255 bytes and read a slash as a folder; a suffix alone
/// would be the name of a hidden file.
QString proposal(const SaveRequest& request)
{
    constexpr qsizetype kLongestName = 255;
    QString name = request.fileName.trimmed();
    name.replace(u'/', u'-');
    if (name.isEmpty() || name.compare(u'.' + request.suffix, Qt::CaseInsensitive) == 0)
        name = request.typeName.toLower();
    QTextBoundaryFinder letters(QTextBoundaryFinder::Grapheme, name);
    letters.toEnd();
    qsizetype end = name.size();
    while (end > 0 && withSuffix(name.first(end), request.suffix).toUtf8().size() > kLongestName)
        end = letters.toPreviousBoundary();
    return withSuffix(name.first(end), request.suffix);
}

} // namespace

FileSavePanel::FileSavePanel(QWidget& context, QString folder)
    : m_context(context)
    , m_folder(std::move(folder))
{}

void FileSavePanel::ask(const SaveRequest& request, std::function<void(const QString& path)> chosen)
{
    auto* panel = new QFileDialog(m_context.window(), request.title, m_folder);
    panel->setObjectName(u"savePanel"_s);
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setWindowModality(Qt::WindowModal);
    panel->setAcceptMode(QFileDialog::AcceptSave);
    panel->setNameFilter(u"%1 (*.%2)"_s.arg(request.typeName, request.suffix));
    panel->setDefaultSuffix(request.suffix);
    panel->selectFile(proposal(request));
    // The panel's own overwrite prompt would block the event loop.
    panel->setOption(QFileDialog::DontConfirmOverwrite);
    QObject::connect(panel, &QFileDialog::fileSelected, &m_context,
                     [this, request, chosen = std::move(chosen)](const QString& selected) {
                         const QString path = withSuffix(selected, request.suffix);
                         m_folder = QFileInfo(path).path();
                         confirm(path, request, chosen);
                     });
    panel->open();
}

void FileSavePanel::confirm(const QString& path, const SaveRequest& request,
                            const std::function<void(const QString& path)>& chosen)
{
    const QFileInfo file(path);
    if (!file.exists()) {
        chosen(path);
        return;
    }
    Question question;
    question.objectName = u"replaceDialog"_s;
    question.title = u"Replace “%1”?"_s.arg(file.fileName());
    question.message = u"A file of that name is there already. Replacing it overwrites what it holds."_s;
    question.action = u"Replace"_s;
    question.isDestructive = true;
    QDialog* box = orvanlite::ask(&m_context, question, [path, chosen] { chosen(path); });
    SaveRequest again = request;
    again.fileName = file.fileName();
    QObject::connect(box, &QDialog::rejected, &m_context, [this, again, chosen] { ask(again, chosen); });
}

} // namespace orvanlite
