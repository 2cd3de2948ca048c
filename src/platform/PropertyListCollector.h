#pragma once

#include "platform/PropertyList.h"

#include <string>
#include <string_view>

namespace orvanlite::platform {

/// Processes the elements of one XML list and collects the requested strings. Each open level takes one byte
/// on the heap, so deep nesting cannot overflow the stack.
///
/// Errors: a call returns false for anything that is not valid in a property list; parsing must end then.
class PropertyListCollector {
public:
    explicit PropertyListCollector(std::span<const PropertyListField> wanted)
        : m_wanted(wanted)
        , m_answers(wanted.size())
    {}

    [[nodiscard]] bool start(std::string_view name);
    [[nodiscard]] bool end();
    /// A part of the text between two tags, in UTF-8.
    [[nodiscard]] bool characters(std::string_view text);

    /// The results at the end of the file; empty without a root.
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
    Element m_value = Element::unknown; ///< type of the open leaf, if that is a value
    bool m_hasWrapper = false;
    bool m_hasRoot = false;
    bool m_collecting = false;
    bool m_listIsWanted = false;  ///< the root's current value is an array that a field reads
    qsizetype m_dictionaries = 0; ///< members of that array so far
    std::string m_text;
    std::string m_key;      ///< of the root's current value
    std::string m_innerKey; ///< of the current value in the first dictionary
};

} // namespace orvanlite::platform
