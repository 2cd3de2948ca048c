#include "platform/freedesktop/FreedesktopDefaults.h"

#include "platform/SystemLayout.h"

#include <QDir>
#include <QSettings>

namespace orvanlite::platform {

using namespace Qt::StringLiterals;

namespace {

/// Whether both values are stored alike. The file keeps numbers and booleans as text, but not byte arrays.
bool isStoredAlike(const QVariant& stored, const QVariant& value)
{
    const bool isBytes = value.metaType().id() == QMetaType::QByteArray;
    if (!stored.isValid() || isBytes != (stored.metaType().id() == QMetaType::QByteArray))
        return false;
    return isBytes ? stored.toByteArray() == value.toByteArray() : stored.toString() == value.toString();
}

class IniDefaults final : public Defaults {
public:
    explicit IniDefaults(const QString& file)
        : m_settings(file, QSettings::IniFormat)
    {}

    [[nodiscard]] QVariant value(const QString& key) const override
    {
        m_settings.sync();
        return m_settings.value(key);
    }

    void setValue(const QString& key, const QVariant& newValue) override
    {
        if (isStoredAlike(value(key), newValue))
            return;
        m_settings.setValue(key, newValue);
        m_settings.sync();
    }

private:
    mutable QSettings m_settings;
};

} // namespace

FreedesktopDefaultsStore::FreedesktopDefaultsStore(const SystemLayout& layout)
    : m_folder(layout.configuration + u"/Orvanlite"_s)
{}

FreedesktopDefaultsStore::~FreedesktopDefaultsStore() = default;

Defaults& FreedesktopDefaultsStore::standard()
{
    if (!m_standard)
        m_standard = std::make_unique<IniDefaults>(m_folder + u"/defaults.ini"_s);
    return *m_standard;
}

Defaults* FreedesktopDefaultsStore::suite(const QString& name)
{
    if (name.isEmpty() || name.contains(u'/') || !QDir().mkpath(m_folder))
        return nullptr;
    std::unique_ptr<Defaults>& suite = m_suites[name];
    if (!suite)
        suite = std::make_unique<IniDefaults>(m_folder + u'/' + name + u".ini"_s);
    return suite.get();
}

} // namespace orvanlite::platform
