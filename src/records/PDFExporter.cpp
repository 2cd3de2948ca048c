#include "records/PDFExporter.h"

#include "platform/Clock.h"
#include "platform/FileManager.h"
#include "platform/Platform.h"
#include "platform/Workspace.h"
#include "records/ReportFormat.h"

#include <utility>

namespace orvanlite {

namespace {

void writeAndOpen(const QString& path, const QByteArray& content, platform::WriteMode mode,
                  const platform::Platform& platform)
{
    try {
        platform.files.write(path, content, mode);
    } catch (const platform::FileError&) {
        // On purpose: not reported. The user notices by whether the file opens.
    }
    platform.workspace.open(QUrl::fromLocalFile(path));
}

} // namespace

void PDFExporter::exportPlugins(AudioPlugins plugins, ExportFormat format, ExportSortOption sortBy,
                                SavePanel& panel, const platform::Platform& platform)
{
    const ReportFormat report = reportFormat(format);
    panel.ask(report.request, [plugins = std::move(plugins), report, sortBy, platform](const QString& path) {
        const QByteArray content = report.generate(sortPlugins(plugins, sortBy), columnOrder(sortBy), sortBy,
                                                   Date::fromUnix(platform.clock.now()));
        writeAndOpen(path, content, report.writeMode, platform);
    });
}

} // namespace orvanlite
