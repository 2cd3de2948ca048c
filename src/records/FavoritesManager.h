#pragma once

#include "model/Observable.h"
#include "records/FavoritesList.h"

#include <vector>

namespace orvanlite::platform {
class FileManager;
}

namespace orvanlite {

/// The favourites lists of the user. Nothing fills, loads or saves them yet, and no name for their file exists.
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
