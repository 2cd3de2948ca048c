#pragma once

#include "model/Observable.h"
#include "records/FavoritesList.h"

#include <vector>

namespace orvanlite::platform {
class FileManager;
}

namespace orvanlite {

/// The user's favourites lists. Not filled, loaded or saved yet; the file has no name yet.
class FavoritesManager final {
public:
    FavoritesManager(platform::FileManager& files, QString favoritesPath)
        : fileManager(files)
        , favoritesUrl(std::move(favoritesPath))
    {}

    Observable<std::vector<FavoritesList>> lists;
    platform::FileManager& fileManager;
    const QString favoritesUrl;
};

} // namespace orvanlite
