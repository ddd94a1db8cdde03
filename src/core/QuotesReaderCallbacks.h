#pragma once

#include <optional>
#include <string>
#include <vector>

// Callbacks for Boost.PropertyTree's JSON parser that collect only what the database
// reader uses, instead of building a property tree: per element of the first "Quotes"
// member of the root object, the text of its first "UID" and first "Content" member.
// The results are those of building the tree and walking it: element keys are ignored,
// a scalar member gives its text, an object or array member gives "" (a tree node's
// data), and a scalar "Quotes" has no elements.
class QBQuotesReaderCallbacks
{
public:
    // Deeper documents are refused: the parser recurses once per level, and a few hundred
    // thousand "[" would overflow the stack. Real databases nest three levels.
    static constexpr std::size_t kMaxNestingDepth = 512;

    struct Element
    {
        std::optional<std::string> uid;
        std::optional<std::string> content;
    };

    using char_type = char;

    bool foundQuotes() const { return mFoundQuotes; }
    std::vector<Element>& elements() { return mElements; }

    void on_null() { setScalar("null"); }
    void on_boolean(bool value) { setScalar(value ? "true" : "false"); }
    template <typename Range> void on_number(Range codeUnits)
    {
        beginValue().assign(codeUnits.begin(), codeUnits.end());
    }
    void on_begin_number() { beginValue(); }
    void on_digit(char digit) { currentText() += digit; }
    void on_end_number() {}
    void on_begin_string() { beginValue(); }
    template <typename Range> void on_code_units(Range codeUnits)
    {
        currentText().append(codeUnits.begin(), codeUnits.end());
    }
    void on_code_unit(char codeUnit) { currentText() += codeUnit; }
    void on_end_string() {}
    void on_begin_array() { beginContainer(Kind::Array); }
    void on_end_array() { endContainer(); }
    void on_begin_object() { beginContainer(Kind::Object); }
    void on_end_object() { endContainer(); }

private:
    // What a node of the document means to the reader.
    enum class Role
    {
        Root,
        Quotes,
        Element,
        UID,
        Content,
        Ignored
    };
    enum class Kind
    {
        Array,
        Object,
        Key,
        Leaf
    };
    struct Layer
    {
        Kind kind;
        Role role;
    };

    void setScalar(const char* text) { beginValue() = text; }
    std::string& beginValue();
    std::string& currentText();
    void beginContainer(Kind kind);
    void endContainer();
    // Opens the node of the next value inside the innermost container.
    Role openChild();
    Role roleOfMember(Role parent, const std::string& key);

    std::vector<Layer> mStack;
    std::vector<Element> mElements;
    std::string mKey;
    std::string mIgnoredText;
    bool mFoundQuotes = false;
};
