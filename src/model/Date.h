#pragma once

namespace orvanlite {

/// A point in time, stored as seconds since 2001-01-01 00:00:00 UTC, so that dates in the JSON files
/// round-trip exactly.
/// Source: Core Foundation's absolute time.
struct Date {
    double sinceReference = 0;

    static constexpr double kReferenceSince1970 = 978307200.0;

    [[nodiscard]] static constexpr Date fromUnix(double secondsSince1970)
    {
        return Date{secondsSince1970 - kReferenceSince1970};
    }
    [[nodiscard]] constexpr double unixTime() const { return sinceReference + kReferenceSince1970; }

    bool operator==(const Date&) const = default;
    bool operator<(const Date& other) const { return sinceReference < other.sinceReference; }
};

} // namespace orvanlite
