#include "platform/PropertyList.h"

#include "platform/PlainXml.h"
#include "platform/PropertyListCollector.h"

#include <expat.h>

#include <QRandomGenerator>

#include <limits>

namespace orvanlite::platform {

namespace {

/// One Expat parser for all lists, with one salt: Expat would ask the system for random bytes at every list.
class SharedParser {
public:
    SharedParser() = default;
    SharedParser(const SharedParser&) = delete;
    SharedParser& operator=(const SharedParser&) = delete;
    ~SharedParser() { XML_ParserFree(m_parser); }

    XML_Parser fresh()
    {
        XML_ParserReset(m_parser, nullptr);
        XML_SetHashSalt(m_parser, m_salt);
        return m_parser;
    }

private:
    XML_Parser m_parser = XML_ParserCreate(nullptr);
    unsigned long m_salt = QRandomGenerator::system()->generate() | 1;
};

/// What the handlers get.
struct Target {
    XML_Parser parser;
    PropertyListCollector& collector;

    static Target& of(void* data) { return *static_cast<Target*>(data); }
    /// Ends the parsing, which then answers with an error.
    void require(bool isSound) const
    {
        if (!isSound)
            XML_StopParser(parser, 0);
    }
};

void onStart(void* data, const XML_Char* name, const XML_Char**)
{
    Target::of(data).require(Target::of(data).collector.start(name));
}

void onEnd(void* data, const XML_Char*) { Target::of(data).require(Target::of(data).collector.end()); }

void onText(void* data, const XML_Char* text, int length)
{
    const std::string_view piece(text, static_cast<std::size_t>(length));
    Target::of(data).require(Target::of(data).collector.characters(piece));
}

void onEntity(void* data, const XML_Char*, int) { Target::of(data).require(false); }

bool readWithExpat(std::string_view text, PropertyListCollector& collector)
{
    if (text.size() > std::numeric_limits<int>::max())
        return false;
    thread_local SharedParser shared;
    Target target{shared.fresh(), collector};
    XML_SetUserData(target.parser, &target);
    XML_SetElementHandler(target.parser, &onStart, &onEnd);
    XML_SetCharacterDataHandler(target.parser, &onText);
    // Entities that the file itself declares are not expanded: no list needs them, and a few lines of them can
    // make gigabytes of text.
    XML_SetDefaultHandler(target.parser, nullptr);
    XML_SetSkippedEntityHandler(target.parser, &onEntity);
    return XML_Parse(target.parser, text.data(), static_cast<int>(text.size()), 1) == XML_STATUS_OK;
}

} // namespace

std::optional<PropertyListTexts> readXmlPropertyList(QByteArrayView data,
                                                     std::span<const PropertyListField> wanted)
{
    const std::string_view text(data.data(), static_cast<std::size_t>(data.size()));
    PropertyListCollector plain(wanted);
    if (readPlainXml(text, plain))
        return plain.finish();
    PropertyListCollector any(wanted);
    if (readWithExpat(text, any))
        return any.finish();
    return std::nullopt;
}

} // namespace orvanlite::platform
