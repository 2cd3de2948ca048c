#pragma once

#include "model/PluginFormat.h"

#include <QUuid>

#include <optional>
#include <vector>

namespace orvanlite {

/// One record of a folded plugin, as it was when the row was built.
struct FormatVariant {
    QUuid id; ///< the record's id
    PluginFormat format = PluginFormat::au;
    bool isEnabled = true;
    std::optional<QString> version;

    /// The label of its chip: the version folder of a Waves plugin ("Waves" when unknown), otherwise the format.
    [[nodiscard]] QString badgeLabel() const;

    bool operator==(const FormatVariant&) const = default;
};

/// All records of one name, folded into one row. Its name is its identity.
struct ConsolidatedPlugin {
    QString name;
    std::vector<FormatVariant> variants;
    bool operator==(const ConsolidatedPlugin&) const = default;
};

} // namespace orvanlite
