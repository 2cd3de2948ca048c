#include "platform/PropertyList.h"

#include "platform/PlainXml.h"
#include "platform/PropertyListCollector.h"

#include <expat.h>

#include <QRandomGenerator>

#include <limits>

namespace orvanlite::platform {

namespace {

/// A list of this size gets its own parser, as Expat keeps the memory that its largest list needed.
constexpr std::size_t kLargeList = 256 * 1024;

/// One Expat parser and hash salt for many lists: by default Expat gets random bytes for every list.
class Parser {
public:
    Parser() = default;
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;
    ~Parser() { XML_ParserFree(m_parser); }

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

/// User data of the handlers.
struct Target {
    XML_Parser parser;
    PropertyListCollector& collector;

    static Target& of(void* data) { return *static_cast<Target*>(data); }
    /// Otherwise stops the parser, which then returns an error.
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

bool readWith(Parser& parser, std::string_view text, PropertyListCollector& collector)
{
    Target target{parser.fresh(), collector};
    XML_SetUserData(target.parser, &target);
    XML_SetElementHandler(target.parser, &onStart, &onEnd);
    XML_SetCharacterDataHandler(target.parser, &onText);
    // Entities declared in the file are not expanded: no list needs them, and a few lines can expand to
    // gigabytes of text.
    XML_SetDefaultHandler(target.parser, nullptr);
    XML_SetSkippedEntityHandler(target.parser, &onEntity);
    return XML_Parse(target.parser, text.data(), static_cast<int>(text.size()), 1) == XML_STATUS_OK;
}

bool readWithExpat(std::string_view text, PropertyListCollector& collector)
{
    if (text.size() > std::numeric_limits<int>::max())
        return false;
    if (text.size() >= kLargeList) {
        Parser own;
        return readWith(own, text, collector);
    }
    thread_local Parser shared;
    return readWith(shared, text, collector);
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
