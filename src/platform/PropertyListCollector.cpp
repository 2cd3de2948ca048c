#include "platform/PropertyListCollector.h"

#include "platform/PropertyListValues.h"
#include "platform/Utf8.h"

#include <algorithm>

namespace orvanlite::platform {

namespace {

bool isBlank(std::string_view text)
{
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return c == '\t' || c == '\n' || c == ' ' || c == '\r'; });
}

bool isSame(QLatin1StringView wanted, const std::string& key)
{
    return std::string_view(wanted.data(), static_cast<std::size_t>(wanted.size())) == key;
}

} // namespace

PropertyListCollector::Element PropertyListCollector::elementNamed(std::string_view name)
{
    struct Row {
        std::string_view name;
        Element element;
    };
    static constexpr Row rows[] = {
        {"key", Element::key},         {"string", Element::text},     {"dict", Element::dictionary},
        {"array", Element::list},      {"integer", Element::integer}, {"true", Element::otherLeaf},
        {"false", Element::otherLeaf}, {"real", Element::real},       {"date", Element::date},
        {"data", Element::otherLeaf},  {"plist", Element::plist},
    };
    for (const Row& row : rows) {
        if (row.name == name)
            return row.element;
    }
    return Element::unknown;
}

bool PropertyListCollector::start(std::string_view name)
{
    const Element element = elementNamed(name);
    if (m_leaf != Leaf::none || element == Element::unknown)
        return false;
    if (m_open.empty())
        return startOutside(element);
    Open& parent = m_open.back();
    if (element == Element::plist || (parent == Open::dictionaryBeforeKey) != (element == Element::key))
        return false;
    if (element == Element::key) {
        m_leaf = Leaf::key;
        collect(m_open.size() == 1 || isInFirstDictionary());
        return true;
    }
    if (parent == Open::dictionaryBeforeValue)
        parent = Open::dictionaryBeforeKey;
    const bool isWanted = startValue(element);
    const bool isChecked =
        element == Element::integer || element == Element::real || element == Element::date;
    collect(isWanted || isChecked);
    open(element);
    return true;
}

bool PropertyListCollector::startOutside(Element element)
{
    if (element == Element::plist && !m_hasWrapper && !m_hasRoot) {
        m_hasWrapper = true;
        return true;
    }
    if (element != Element::dictionary || m_hasRoot)
        return false;
    m_hasRoot = true;
    open(element);
    return true;
}

/// Discards earlier results for the key of the new value and returns whether the text of the value is needed.
bool PropertyListCollector::startValue(Element element)
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

void PropertyListCollector::open(Element element)
{
    if (element == Element::dictionary)
        m_open.push_back(Open::dictionaryBeforeKey);
    else if (element == Element::list)
        m_open.push_back(Open::list);
    else {
        m_leaf = Leaf::value;
        m_value = element;
    }
}

bool PropertyListCollector::end()
{
    if (m_leaf == Leaf::key) {
        if (m_collecting)
            (m_open.size() == 1 ? m_key : m_innerKey).swap(m_text);
        m_open.back() = Open::dictionaryBeforeValue;
    } else if (m_leaf == Leaf::value) {
        if (m_collecting && !endValue())
            return false;
    } else if (!m_open.empty()) {
        if (m_open.back() == Open::dictionaryBeforeValue)
            return false;
        m_open.pop_back();
    }
    m_leaf = Leaf::none;
    m_collecting = false;
    return true;
}

/// Stores a requested string. Returns false for an invalid number or date.
bool PropertyListCollector::endValue()
{
    switch (m_value) {
    case Element::integer:
        return isInteger(m_text);
    case Element::real:
        return isReal(m_text);
    case Element::date:
        return isDate(m_text);
    default:
        answer(fromUtf8(m_text));
        return true;
    }
}

bool PropertyListCollector::characters(std::string_view text)
{
    if (m_collecting)
        m_text += text;
    return m_leaf != Leaf::none || isBlank(text);
}

std::optional<PropertyListTexts> PropertyListCollector::finish()
{
    if (!m_hasRoot || !m_open.empty())
        return std::nullopt;
    return std::move(m_answers);
}

void PropertyListCollector::collect(bool wanted)
{
    m_collecting = wanted;
    m_text.clear();
}

bool PropertyListCollector::isInFirstDictionary() const
{
    return m_listIsWanted && m_dictionaries == 1 && m_open.size() == 3;
}

/// Sets the result of every field that requests the current value. Returns whether there is one.
bool PropertyListCollector::answer(const std::optional<QString>& text)
{
    const bool isInner = m_open.size() > 1;
    bool any = false;
    for (std::size_t i = 0; i < m_wanted.size(); ++i) {
        const QLatin1StringView inner = m_wanted[i].keyInFirstDictionary;
        if (isSame(m_wanted[i].key, m_key) && (isInner ? isSame(inner, m_innerKey) : inner.isEmpty())) {
            m_answers[i] = text;
            any = true;
        }
    }
    return any;
}

/// Clears the results from inside the root's current value. Returns whether any field reads it.
bool PropertyListCollector::forgetList()
{
    bool any = false;
    for (std::size_t i = 0; i < m_wanted.size(); ++i) {
        if (!m_wanted[i].keyInFirstDictionary.isEmpty() && isSame(m_wanted[i].key, m_key)) {
            m_answers[i].reset();
            any = true;
        }
    }
    return any;
}

} // namespace orvanlite::platform
