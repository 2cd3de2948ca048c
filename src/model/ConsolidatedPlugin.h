#pragma once

#include "model/PluginFormat.h"

#include <QUuid>

#include <optional>
#include <vector>

namespace orvanlite {

/// One record of a consolidated plugin, as of when the row was built.
struct FormatVariant {
    QUuid id; ///< the record's id
    PluginFormat format = PluginFormat::au;
    bool isEnabled = true;
    std::optional<QString> version;

    /// Label of its chip: the version folder of a Waves plugin ("Waves" when unknown), otherwise the format.
    [[nodiscard]] QString badgeLabel() const;

    bool operator==(const FormatVariant&) const = default;
};

/// All records with the same name, shown as one row. The name is its identity.
struct ConsolidatedPlugin {
    QString name;
    std::vector<FormatVariant> variants;
    bool operator==(const ConsolidatedPlugin&) const = default;
};

} // namespace orvanlite
