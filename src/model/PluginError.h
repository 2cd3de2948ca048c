#pragma once

#include <QString>

#include <exception>

namespace orvanlite {

/// An error of the plugin layer with one text as payload.
class PluginError : public std::exception {
public:
    enum class Kind { permissionDenied, fileNotFound, invalidPath, databaseError, unknownError };

    PluginError(Kind kind, QString payload);

    [[nodiscard]] Kind kind() const { return m_kind; }
    [[nodiscard]] const QString& payload() const { return m_payload; }
    /// The text for the user, e.g. "Permission denied: User canceled.".
    [[nodiscard]] QString errorDescription() const;
    [[nodiscard]] const char* what() const noexcept override { return m_what.constData(); }

    bool operator==(const PluginError& other) const
    {
        return m_kind == other.m_kind && m_payload == other.m_payload;
    }

private:
    Kind m_kind;
    QString m_payload;
    QByteArray m_what;
};

} // namespace orvanlite
