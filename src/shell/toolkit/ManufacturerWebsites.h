#pragma once

#include <QString>
#include <QUrl>

namespace orvanlite {

/// The maker's own site where a known key is part of the name, in any letter case, and otherwise a web search for its
/// plugins.
[[nodiscard]] QUrl manufacturerWebsiteURL(const QString& manufacturer);

/// A web search for the text.
[[nodiscard]] QUrl webSearchURL(const QString& query);

} // namespace orvanlite
