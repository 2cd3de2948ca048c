#include "records/PDFExporter.h"

#include "platform/Clock.h"
#include "platform/FileManager.h"
#include "platform/Platform.h"
#include "platform/Workspace.h"
#include "records/CSVReport.h"
#include "records/PDFReport.h"
#include "records/SavePanel.h"

#include <utility>

namespace orvanlite {

using namespace Qt::StringLiterals;

namespace {

void writeAndOpen(const QString& path, const QByteArray& content, platform::WriteMode mode,
                  const platform::Platform& platform)
{
    try {
        platform.files.write(path, content, mode);
    } catch (const platform::FileError&) {
        // On purpose: no failure of a report reaches the user but by the file that opens, or does not.
    }
    platform.workspace.open(QUrl::fromLocalFile(path));
}

} // namespace

void PDFExporter::exportPlugins(AudioPlugins plugins, ExportSortOption sortBy, SavePanel& panel,
                                const platform::Platform& platform)
{
    const SaveRequest request{u"Export Plugins as PDF"_s, u"Orvanlite_Plugins.pdf"_s, u"PDF document"_s,
                              u"pdf"_s};
    panel.ask(request, [plugins = std::move(plugins), sortBy, platform](const QString& path) {
        const QByteArray pdf = generatePDF(sortPlugins(plugins, sortBy), columnOrder(sortBy), sortBy,
                                           Date::fromUnix(platform.clock.now()));
        writeAndOpen(path, pdf, platform::WriteMode::inPlace, platform);
    });
}

void PDFExporter::exportPluginsAsCSV(AudioPlugins plugins, ExportSortOption sortBy, SavePanel& panel,
                                     const platform::Platform& platform)
{
    const SaveRequest request{u"Export Plugins as CSV"_s, u"Orvanlite_Plugins.csv"_s,
                              u"Comma-separated text"_s, u"csv"_s};
    panel.ask(request, [plugins = std::move(plugins), sortBy, platform](const QString& path) {
        const QByteArray csv = generateCSV(sortPlugins(plugins, sortBy), columnOrder(sortBy),
                                           Date::fromUnix(platform.clock.now()));
        writeAndOpen(path, csv, platform::WriteMode::replaceFile, platform);
    });
}

} // namespace orvanlite
