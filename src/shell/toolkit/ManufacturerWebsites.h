#pragma once

#include <QString>
#include <QUrl>

namespace orvanlite {

/// The manufacturer's website if the name contains a known key, ignoring case; otherwise a web search for its
/// plugins.
[[nodiscard]] QUrl manufacturerWebsiteURL(const QString& manufacturer);

/// A web search for the text.
[[nodiscard]] QUrl webSearchURL(const QString& query);

} // namespace orvanlite
