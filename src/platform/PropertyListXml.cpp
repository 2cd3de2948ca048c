#include "platform/PropertyList.h"

#include <expat.h>

#include <QRandomGenerator>

#include <algorithm>
#include <limits>
#include <string>
#include <string_view>

namespace orvanlite::platform {

namespace {

enum class Element { plist, dictionary, list, key, text, otherLeaf, unknown };

Element elementNamed(std::string_view name)
{
    struct Row {
        std::string_view name;
        Element element;
    };
    static constexpr Row rows[] = {
        {"key", Element::key},         {"string", Element::text},       {"dict", Element::dictionary},
        {"array", Element::list},      {"integer", Element::otherLeaf}, {"true", Element::otherLeaf},
        {"false", Element::otherLeaf}, {"real", Element::otherLeaf},    {"date", Element::otherLeaf},
        {"data", Element::otherLeaf},  {"plist", Element::plist},
    };
    const auto* row =
        std::find_if(std::begin(rows), std::end(rows), [&](const Row& each) { return each.name == name; });
    return row == std::end(rows) ? Element::unknown : row->element;
}

bool isBlank(std::string_view text) { return text.find_first_not_of(" \t\r\n") == std::string_view::npos; }

/// One Expat parser for all lists: making one costs as much as parsing a short list.
class SharedParser {
public:
    SharedParser() = default;
    SharedParser(const SharedParser&) = delete;
    SharedParser& operator=(const SharedParser&) = delete;
    ~SharedParser() { XML_ParserFree(m_parser); }

    XML_Parser fresh()
    {
        XML_ParserReset(m_parser, nullptr);
        // Expat would ask the system for random bytes at every list.
        XML_SetHashSalt(m_parser, m_salt);
        return m_parser;
    }

private:
    XML_Parser m_parser = XML_ParserCreate(nullptr);
    unsigned long m_salt = QRandomGenerator::system()->generate() | 1;
};

/// Follows the elements of one list and keeps the wanted texts. What is open is a stack of one byte a level,
/// so the depth of a file costs memory in proportion to its length and no stack.
class XmlReader {
public:
    XmlReader(XML_Parser parser, std::span<const PropertyListField> wanted)
        : m_parser(parser)
        , m_wanted(wanted)
        , m_answers(wanted.size())
    {
        XML_SetUserData(parser, this);
        XML_SetElementHandler(parser, &XmlReader::onStart, &XmlReader::onEnd);
        XML_SetCharacterDataHandler(parser, &XmlReader::onText);
        // Entities that the file itself declares are not expanded: no list needs them, and a few lines of
        // them can make gigabytes of text.
        XML_SetDefaultHandler(parser, nullptr);
        XML_SetSkippedEntityHandler(parser, &XmlReader::onEntity);
    }

    std::optional<PropertyListTexts> read(QByteArrayView data)
    {
        if (data.size() > std::numeric_limits<int>::max())
            return std::nullopt;
        const XML_Status status = XML_Parse(m_parser, data.data(), static_cast<int>(data.size()), 1);
        if (status != XML_STATUS_OK || !m_hasRoot)
            return std::nullopt;
        return std::move(m_answers);
    }

private:
    enum class Open : char { list, dictionaryBeforeKey, dictionaryBeforeValue };
    enum class Leaf { none, key, value };

    static XmlReader& self(void* data) { return *static_cast<XmlReader*>(data); }
    static void onStart(void* data, const XML_Char* name, const XML_Char**) { self(data).start(name); }
    static void onEnd(void* data, const XML_Char*) { self(data).end(); }
    static void onText(void* data, const XML_Char* text, int length)
    {
        self(data).characters({text, static_cast<std::size_t>(length)});
    }
    static void onEntity(void* data, const XML_Char*, int) { self(data).fail(); }

    /// Ends the parsing, which then answers with an error.
    void fail() { XML_StopParser(m_parser, 0); }

    void start(std::string_view name)
    {
        const Element element = elementNamed(name);
        if (m_leaf != Leaf::none || element == Element::unknown)
            return fail();
        if (m_open.empty())
            return startOutside(element);
        Open& parent = m_open.back();
        if ((parent == Open::dictionaryBeforeKey) != (element == Element::key))
            return fail();
        if (element == Element::key) {
            m_leaf = Leaf::key;
            collect(m_open.size() == 1 || isInFirstDictionary());
            return;
        }
        if (element == Element::plist)
            return fail();
        if (parent == Open::dictionaryBeforeValue)
            parent = Open::dictionaryBeforeKey;
        collect(startValue(element));
        open(element);
    }

    void startOutside(Element element)
    {
        if (element == Element::plist && !m_hasWrapper && !m_hasRoot) {
            m_hasWrapper = true;
            return;
        }
        if (element != Element::dictionary || m_hasRoot)
            return fail();
        m_hasRoot = true;
        open(element);
    }

    void open(Element element)
    {
        if (element == Element::dictionary)
            m_open.push_back(Open::dictionaryBeforeKey);
        else if (element == Element::list)
            m_open.push_back(Open::list);
        else
            m_leaf = Leaf::value;
    }

    /// Takes note of a value's beginning; whether its text is wanted. An earlier answer under the same key
    /// falls.
    bool startValue(Element element)
    {
        if (m_open.size() == 1) {
            const bool wanted = answer(std::nullopt);
            m_listIsWanted = forgetList() && element == Element::list;
            m_dictionaries = 0;
            return wanted && element == Element::text;
        }
        if (m_open.size() == 2 && m_listIsWanted) {
            ++m_dictionaries;
            if (element != Element::dictionary) {
                forgetList();
                m_listIsWanted = false;
            }
        }
        return isInFirstDictionary() && answer(std::nullopt) && element == Element::text;
    }

    void end()
    {
        if (m_leaf == Leaf::key) {
            if (m_collecting)
                (m_open.size() == 1 ? m_key : m_innerKey) = m_text;
            m_open.back() = Open::dictionaryBeforeValue;
        } else if (m_leaf == Leaf::value) {
            if (m_collecting)
                answer(QString::fromUtf8(m_text));
        } else if (!m_open.empty()) {
            if (m_open.back() == Open::dictionaryBeforeValue)
                return fail();
            m_open.pop_back();
        }
        m_leaf = Leaf::none;
        m_collecting = false;
    }

    void collect(bool wanted)
    {
        m_collecting = wanted;
        m_text.clear();
    }

    void characters(std::string_view text)
    {
        if (m_collecting)
            m_text += text;
        else if (m_leaf == Leaf::none && !isBlank(text))
            fail();
    }

    [[nodiscard]] bool isInFirstDictionary() const
    {
        return m_listIsWanted && m_dictionaries == 1 && m_open.size() == 3;
    }

    static bool same(QLatin1StringView wanted, const std::string& key)
    {
        return std::string_view(wanted.data(), static_cast<std::size_t>(wanted.size())) == key;
    }

    /// Answers every field that asks for the value at hand; whether there is one.
    bool answer(const std::optional<QString>& text)
    {
        const bool isInner = m_open.size() > 1;
        bool any = false;
        for (std::size_t i = 0; i < m_wanted.size(); ++i) {
            const PropertyListField& field = m_wanted[i];
            const bool matches =
                isInner ? same(field.keyInFirstDictionary, m_innerKey) : field.keyInFirstDictionary.isEmpty();
            if (matches && same(field.key, m_key)) {
                m_answers[i] = text;
                any = true;
            }
        }
        return any;
    }

    /// Takes back every answer from within the root's value at hand; whether a field asks for any.
    bool forgetList()
    {
        bool any = false;
        for (std::size_t i = 0; i < m_wanted.size(); ++i) {
            if (!m_wanted[i].keyInFirstDictionary.isEmpty() && same(m_wanted[i].key, m_key)) {
                m_answers[i].reset();
                any = true;
            }
        }
        return any;
    }

    XML_Parser m_parser;
    std::span<const PropertyListField> m_wanted;
    PropertyListTexts m_answers;
    std::vector<Open> m_open;
    Leaf m_leaf = Leaf::none;
    bool m_hasWrapper = false;
    bool m_hasRoot = false;
    bool m_collecting = false;
    bool m_listIsWanted = false;  ///< the root's value at hand is a list that a field looks into
    qsizetype m_dictionaries = 0; ///< members of that list so far
    std::string m_text;
    std::string m_key;      ///< of the root's value at hand
    std::string m_innerKey; ///< of the value at hand in the first dictionary
};

} // namespace

std::optional<PropertyListTexts> readXmlPropertyList(QByteArrayView data,
                                                     std::span<const PropertyListField> wanted)
{
    thread_local SharedParser parser;
    return XmlReader(parser.fresh(), wanted).read(data);
}

} // namespace orvanlite::platform
