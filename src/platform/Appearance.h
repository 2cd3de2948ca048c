#pragma once

#include <QObject>

#include <functional>
#include <optional>

namespace orvanlite::platform {

/// An sRGB colour, each component from 0 to 1.
struct Rgb {
    double red = 0;
    double green = 0;
    double blue = 0;
    bool operator==(const Rgb&) const = default;
};

/// The user's system-wide appearance settings; nullopt where the system does not report one.
class Appearance {
public:
    Appearance() = default;
    Appearance(const Appearance&) = delete;
    Appearance& operator=(const Appearance&) = delete;
    virtual ~Appearance() = default;

    [[nodiscard]] virtual std::optional<bool> isDark() const = 0;
    [[nodiscard]] virtual std::optional<Rgb> accentColour() const = 0;
    [[nodiscard]] virtual bool reducesMotion() const = 0;
    /// Whether the user has asked for higher contrast.
    [[nodiscard]] virtual bool increasesContrast() const = 0;

    /// Calls the handler after any of the four has changed, for the lifetime of `context`.
    virtual void observe(QObject* context, std::function<void()> handler) = 0;
};

} // namespace orvanlite::platform
