#pragma once

#include "platform/PropertyList.h"

#include <string>
#include <string_view>

namespace orvanlite::platform {

/// Follows the elements of one XML list and keeps the wanted texts. What is open is a stack of one byte a level,
/// so the depth of a file costs memory in proportion to its length and no stack.
///
/// Errors: every call answers false from the first thing on that no property list holds.
class PropertyListCollector {
public:
    explicit PropertyListCollector(std::span<const PropertyListField> wanted)
        : m_wanted(wanted)
        , m_answers(wanted.size())
    {}

    [[nodiscard]] bool start(std::string_view name);
    [[nodiscard]] bool end();
    /// A piece of the text between two tags, in UTF-8.
    [[nodiscard]] bool characters(std::string_view text);

    /// The answers once the file has ended; nothing for a file without a root.
    [[nodiscard]] std::optional<PropertyListTexts> finish();

private:
    enum class Element { plist, dictionary, list, key, text, integer, real, date, otherLeaf, unknown };
    enum class Open : char { list, dictionaryBeforeKey, dictionaryBeforeValue };
    enum class Leaf { none, key, value };

    [[nodiscard]] static Element elementNamed(std::string_view name);
    [[nodiscard]] bool startOutside(Element element);
    [[nodiscard]] bool startValue(Element element);
    [[nodiscard]] bool endValue();
    void open(Element element);
    void collect(bool wanted);
    [[nodiscard]] bool isInFirstDictionary() const;
    bool answer(const std::optional<QString>& text);
    bool forgetList();

    std::span<const PropertyListField> m_wanted;
    PropertyListTexts m_answers;
    std::vector<Open> m_open;
    Leaf m_leaf = Leaf::none;
    Element m_value = Element::unknown; ///< of the open leaf, if that is a value
    bool m_hasWrapper = false;
    bool m_hasRoot = false;
    bool m_collecting = false;
    bool m_listIsWanted = false;  ///< the root's value at hand is a list that a field looks into
    qsizetype m_dictionaries = 0; ///< members of that list so far
    std::string m_text;
    std::string m_key;      ///< of the root's value at hand
    std::string m_innerKey; ///< of the value at hand in the first dictionary
};

} // namespace orvanlite::platform
