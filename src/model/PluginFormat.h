#pragma once

#include "model/RawValue.h"

#include <QHashFunctions>

#include <array>

namespace orvanlite {

/// Plugin formats in scan order. The raw value is stored in the catalogue, is part of the plugin key, names
/// the format's folder of disabled plugins and is shown to the user.
enum class PluginFormat { au, vst3, vst2, aax, clap, wavesBundle };

template <>
struct RawValueTable<PluginFormat> {
    static constexpr std::array<RawValueRow<PluginFormat>, 6> rows{{
        {PluginFormat::au, u"Audio Units"},
        {PluginFormat::vst3, u"VST3"},
        {PluginFormat::vst2, u"VST"},
        {PluginFormat::aax, u"AAX"},
        {PluginFormat::clap, u"CLAP"},
        {PluginFormat::wavesBundle, u"Waves"},
    }};
};

inline size_t qHash(PluginFormat format, size_t seed = 0) noexcept
{
    return ::qHash(static_cast<int>(format), seed);
}

} // namespace orvanlite
