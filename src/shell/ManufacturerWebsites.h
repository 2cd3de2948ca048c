#pragma once

#include <QString>
#include <QUrl>

namespace orvanlite {

/// The web page of a maker: so far a web search for its plugins.
[[nodiscard]] QUrl manufacturerWebsiteURL(const QString& manufacturer);

/// A web search for the text.
[[nodiscard]] QUrl webSearchURL(const QString& query);

} // namespace orvanlite
