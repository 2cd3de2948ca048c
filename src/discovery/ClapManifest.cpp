#include "discovery/ClapManifest.h"

#include "platform/Utf8.h"

#include <nlohmann/json.hpp>

namespace orvanlite {

namespace {

/// Receives the values in document order.
class VendorListener final : public nlohmann::json_sax<nlohmann::json> {
public:
    std::optional<QString> vendor;

    bool key(string_t& name) override
    {
        if (m_depth == 1) {
            m_isPlugin = name == "plugin";
            m_isVendor = false;
            if (m_isPlugin)
                vendor.reset();
        } else if (m_depth == 2 && m_isPlugin) {
            m_isVendor = name == "vendor";
            if (m_isVendor)
                vendor.reset();
        }
        return true;
    }
    bool string(string_t& value) override
    {
        if (m_depth == 2 && m_isPlugin && m_isVendor)
            vendor = platform::fromUtf8(value);
        return true;
    }

    bool start_object(std::size_t) override { return open(); }
    bool start_array(std::size_t) override { return open(); }
    bool end_object() override { return close(); }
    bool end_array() override { return close(); }
    bool null() override { return true; }
    bool boolean(bool) override { return true; }
    bool number_integer(number_integer_t) override { return true; }
    bool number_unsigned(number_unsigned_t) override { return true; }
    bool number_float(number_float_t, const string_t&) override { return true; }
    bool binary(binary_t&) override { return true; }
    bool parse_error(std::size_t, const std::string&, const nlohmann::json::exception&) override
    {
        return false;
    }

private:
    bool open()
    {
        ++m_depth;
        return true;
    }
    bool close()
    {
        --m_depth;
        return true;
    }

    std::size_t m_depth = 0;
    bool m_isPlugin = false; ///< the root's current member is "plugin"
    bool m_isVendor = false; ///< the plugin's current member is "vendor"
};

} // namespace

std::optional<QString> vendorInClapManifest(QByteArrayView text)
{
    VendorListener listener;
    if (!nlohmann::json::sax_parse(text.begin(), text.end(), &listener))
        return std::nullopt;
    return listener.vendor;
}

} // namespace orvanlite
