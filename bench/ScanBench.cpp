// A whole scan compared with its lower bound: listing the same folders, reading each Info.plist and one stat
// per bundle through plain system calls, without parsing. Best of several runs on a warm cache, in
// milliseconds.

#include "demo/BinaryInfoPlist.h"
#include "discovery/PluginScanner.h"
#include "model/PluginLocations.h"
#include "platform/Platform.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <limits>
#include <string>
#include <string_view>

using namespace Qt::StringLiterals;

namespace orvanlite {

namespace {

constexpr double kGoal = 1.2;
constexpr int kBundlesPerVendor = 12;

using Members = QList<std::pair<QString, QString>>;

Members members(const QString& name, const QString& vendor)
{
    return {{u"CFBundleDevelopmentRegion"_s, u"English"_s},
            {u"CFBundleExecutable"_s, name},
            {u"CFBundleGetInfoString"_s,
             u"%1 3.2.1, Copyright 2024 %2. All rights reserved."_s.arg(name, vendor)},
            {u"CFBundleIdentifier"_s, u"com.%1.%2"_s.arg(vendor.toLower(), name.toLower())},
            {u"CFBundleInfoDictionaryVersion"_s, u"6.0"_s},
            {u"CFBundleName"_s, name},
            {u"CFBundlePackageType"_s, u"BNDL"_s},
            {u"CFBundleShortVersionString"_s, u"3.2.1"_s},
            {u"CFBundleSignature"_s, u"????"_s},
            {u"CFBundleVersion"_s, u"3.2.1.4711"_s},
            {u"DTPlatformName"_s, u"macosx"_s},
            {u"DTXcodeBuild"_s, u"15A240d"_s},
            {u"LSMinimumSystemVersion"_s, u"10.13"_s},
            {u"NSHumanReadableCopyright"_s, u"Copyright 2024 %1"_s.arg(vendor)}};
}

QByteArray xmlList(const Members& members, const QString& componentName)
{
    QByteArray list = R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
)";
    for (const auto& [key, text] : members)
        list += "\t<key>" + key.toUtf8() + "</key>\n\t<string>" + text.toUtf8() + "</string>\n";
    if (!componentName.isEmpty()) {
        list += "\t<key>AudioComponents</key>\n\t<array>\n\t\t<dict>\n";
        for (const char* key :
             {"description", "factoryFunction", "manufacturer", "name", "subtype", "type"}) {
            list += "\t\t\t<key>" + QByteArray(key) + "</key>\n\t\t\t<string>" + componentName.toUtf8() +
                    "</string>\n";
        }
        list += "\t\t\t<key>version</key>\n\t\t\t<integer>197121</integer>\n\t\t</dict>\n\t</array>\n";
    }
    return list + "\t<key>NSHighResolutionCapable</key>\n\t<true/>\n</dict>\n</plist>\n";
}

void write(const QString& path, const QByteArray& content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}

/// Half of the manufacturers have their own folder; one property list in ten is binary.
void makeTree(const platform::SystemLayout& layout, int bundles)
{
    constexpr std::array formats{PluginFormat::au, PluginFormat::vst3, PluginFormat::vst2,
                                 PluginFormat::clap};
    for (int i = 0; i < bundles; ++i) {
        const int number = i / kBundlesPerVendor;
        const QString vendor = u"Vendor%1"_s.arg(number);
        const QString name = u"Sample Plugin %1"_s.arg(i);
        const PluginFormat format = formats[static_cast<std::size_t>(i) % formats.size()];
        const QString folder =
            PluginLocations(layout).systemPaths(format).at(0) + (number % 2 == 0 ? u"/"_s + vendor : u""_s);
        const QString contents = folder + u'/' + name + u'.' +
                                 PluginLocations::bundleExtension(format).toString() + u"/Contents"_s;
        if (!QDir().mkpath(contents + u"/MacOS"_s))
            qFatal("cannot make %s", qPrintable(contents));
        write(contents + u"/MacOS/"_s + name, "code");
        const QString component = format == PluginFormat::au ? vendor + u": "_s + name : QString();
        const Members texts = members(name, vendor);
        write(contents + u"/Info.plist"_s,
              i % 10 == 9 ? demo::binaryInfoPlist(texts, component) : xmlList(texts, component));
    }
}

/// The minimum work of a scan, with plain system calls.
class Floor {
public:
    std::size_t bundles = 0;
    std::size_t bytes = 0;

    void walk(const std::string& folder, std::string_view extension)
    {
        DIR* directory = ::opendir(folder.c_str());
        if (!directory)
            return;
        while (const dirent* entry = ::readdir(directory)) {
            const std::string_view name = entry->d_name;
            if (name.front() == '.')
                continue;
            const auto dot = name.rfind('.');
            if (dot != std::string_view::npos && name.substr(dot + 1) == extension)
                look(folder + '/' + std::string(name), std::string(name.substr(0, dot)));
            else if (entry->d_type == DT_DIR)
                walk(folder + '/' + std::string(name), extension);
        }
        ::closedir(directory);
    }

private:
    void look(const std::string& bundle, const std::string& name)
    {
        static std::array<char, 1 << 16> buffer;
        const int file = ::open((bundle + "/Contents/Info.plist").c_str(), O_RDONLY | O_CLOEXEC);
        if (file >= 0) {
            while (true) {
                const ssize_t got = ::read(file, buffer.data(), buffer.size());
                if (got <= 0)
                    break;
                bytes += static_cast<std::size_t>(got);
            }
            ::close(file);
        }
        struct stat information {};
        if (::stat((bundle + "/Contents/MacOS/" + name).c_str(), &information) == 0)
            ++bundles;
    }
};

template <typename Run>
double milliseconds(Run run)
{
    const auto start = std::chrono::steady_clock::now();
    run();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

bool bench(int bundles)
{
    const QTemporaryDir folder;
    const auto layout = platform::SystemLayout::sandbox(QDir(folder.path()).canonicalPath());
    const auto services = platform::makePlatformServices(layout, platform::Elevation::none);
    makeTree(layout, bundles);
    PluginScanner scanner(services->platform());
    double floorTime = std::numeric_limits<double>::max();
    double scanTime = floorTime;
    Floor floor;
    // Alternating, so that both see the same load.
    for (int round = 0; round < 15; ++round) {
        floor = Floor();
        floorTime = std::min(
            floorTime, milliseconds([&] {
                for (const PluginFormat format : allCases<PluginFormat>) {
                    for (const QString& path : PluginLocations(layout).systemPaths(format))
                        floor.walk(path.toStdString(),
                                   PluginLocations::bundleExtension(format).toString().toStdString());
                }
            }));
        scanTime = std::min(scanTime, milliseconds([&] { scanner.scanAllPlugins(); }));
    }
    const std::size_t found = scanner.discoveredPlugins->size();
    const double ratio = scanTime / floorTime;
    std::printf("%7d bundles  floor %9.2f  scan %9.2f  ratio %5.2f  %s %.1f  (%zu found, %zu bytes a list)\n",
                bundles, floorTime, scanTime, ratio, ratio <= kGoal ? "within" : "ABOVE", kGoal, found,
                floor.bytes / static_cast<std::size_t>(bundles));
    std::fflush(stdout);
    return found == static_cast<std::size_t>(bundles) && floor.bundles == found;
}

} // namespace

} // namespace orvanlite

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const bool complete = orvanlite::bench(5'000) && orvanlite::bench(20'000);
    return complete ? 0 : 1;
}
