#pragma once

#include "model/Observable.h"

#include <QString>

namespace orvanlite {

/// What the progress panel shows.
struct ProgressHUDModel {
    Observable<QString> label{};
    Observable<int> count{};       ///< plugins in the batch
    Observable<double> progress{}; ///< from 0 to 1
};

} // namespace orvanlite
