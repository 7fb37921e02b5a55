// XML documents as trees. Documents come from outside: no document type is read, no entity but the five of XML itself is
// expanded, and nothing is fetched.
#pragma once

#include "siblings/SiblingsApi.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

struct IStream;

/// An XPath expression. One that can't be read selects nothing.
class WXPath {
public:
    /// Takes the text, which is not checked here.
    explicit WXPath(TvlString expression) : m_expression(std::move(expression)) { }
    /// The text that it was made from.
    const TvlString& Expression() const { return m_expression; }

private:
    TvlString m_expression;
};

/// The value of an attribute, or the text of an element. Belongs to a document that lives. Numbers are written with a
/// point; blanks around a value are ignored, and a text that is not wholly a number counts as no number.
class TVLSIBLINGS_API WXmlValueAccessor {
public:
    /// Whether there is such a value.
    bool Exists() const;
    /// 0 when there is no integer of 32 bits.
    int GetInt() const { return GetInt(0); }
    /// `defaultValue` when there is no integer of 32 bits.
    int GetInt(int defaultValue) const;
    /// Raises std::runtime_error when there is no integer of 32 bits.
    int GetInt_throws() const;
    /// A number out of range is infinite or 0.0; words such as "nan" are no numbers.
    double GetDouble(double defaultValue) const;
    /// `defaultValue` when there is no such value.
    TvlString GetString(const TvlString& defaultValue) const;
    /// The value as the document holds it, in UTF-8; empty when there is none. Good until the value changes.
    std::string_view GetUtf8() const;
    /// "true" and "1", "false" and "0".
    bool GetBool(bool defaultValue) const;

    // Setters make the attribute when it is not there. Those with a default write nothing when the value equals it.

    /// In decimal digits.
    void SetInt(int value);
    /// Nothing is written, and nothing made, when the value equals the default.
    void SetInt(int value, int defaultValue);
    /// With the shortest digits that read back as the same number.
    void SetDouble(double value);
    /// As it is.
    void SetString(const TvlString& value);
    /// As "true" or "false".
    void SetBool(bool value);
    /// Nothing is written, and nothing made, when the value equals the default.
    void SetBool(bool value, bool defaultValue);

private:
    friend class WXmlNode;
    WXmlValueAccessor(void* element, const wchar_t* name, void* attribute)
        : m_element(element), m_name(name), m_attribute(attribute)
    {
    }
    /// The bytes of the value, or null.
    const char* Bytes() const;
    void SetBytes(const char* bytes);

    void* m_element;
    const wchar_t* m_name;   // null for the element's text
    void* m_attribute;       // null while there is none of the name
};

class WXmlNode;

/// The attributes of an element, read in one pass: for elements of many values, where WXmlNode::Attribute would search
/// the same list for each. Belongs to a document that lives and is not changed. Values read as WXmlValueAccessor reads
/// them; asking in the order of the file finds each at once. Of attributes of one name, which XML forbids, any may be found.
class TVLSIBLINGS_API WXmlAttributes {
public:
    /// Reads the element's attributes; nothing has none.
    explicit WXmlAttributes(const WXmlNode& node);

    /// Whether there is such an attribute, be it empty.
    bool Exists(std::string_view name) const { return Find(name).data() != nullptr; }
    /// @{
    /// As WXmlValueAccessor reads the value; `defaultValue` when there is none or it is of another type.
    int GetInt(std::string_view name, int defaultValue) const;
    double GetDouble(std::string_view name, double defaultValue) const;
    bool GetBool(std::string_view name, bool defaultValue) const;
    /// @}
    /// The value in UTF-8.
    std::string_view GetUtf8(std::string_view name, std::string_view defaultValue) const;

private:
    static constexpr std::size_t kCapacity = 16;   // more than our own elements have; the rest is searched for
    /// @cond
    struct Attribute {   // without initial values: most of the room stays unused
        const char* name;
        std::size_t nameSize;
        const char* value;
    };
    /// @endcond

    /// The value of an attribute of a name; null data when there is none.
    std::string_view Find(std::string_view name) const;

    std::string_view FindBeyond(std::string_view name) const;

    Attribute m_attributes[kCapacity];
    std::size_t m_count = 0;
    mutable std::size_t m_next = 0;   // behind the one that was found last
    void* m_beyond = nullptr;         // the first that has no room
};

class WXmlNodeList;

/// An element, or nothing. Belongs to a document that lives.
class TVLSIBLINGS_API WXmlNode {
public:
    /// Nothing.
    WXmlNode() = default;
    /// Whether it is an element.
    explicit operator bool() const { return m_element != nullptr; }

    /// The attribute of a name. Each search begins behind the one before, so that reading attributes in the order of the
    /// file finds each at once.
    /// @param name kept by pointer as long as the accessor is in use
    WXmlValueAccessor Attribute(const wchar_t* name) const;
    /// The element's text.
    WXmlValueAccessor Value() const { return {m_element, nullptr, nullptr}; }
    /// The elements that an expression selects from here.
    void GetNodes(const WXPath& path, WXmlNodeList& nodes) const;
    /// The first of them, or nothing.
    WXmlNode GetNode(const WXPath& path) const;
    /// Whether the expression selects anything.
    bool DoesNodeExist(const WXPath& path) const { return static_cast<bool>(GetNode(path)); }
    /// Removes the first child that an expression selects; false when there is none.
    bool DeleteChild(const WXPath& path) const;
    /// Adds an element behind the others; nothing in nothing.
    /// @param text the new element's text, or null
    WXmlNode CreateChild(const wchar_t* name, const wchar_t* text) const;

private:
    friend class WXmlDoc;
    friend class WXmlAttributes;
    friend class WXmlAttributeWriter;
    friend class WXmlListWriter;
    explicit WXmlNode(void* element) : m_element(element) { }

    void* m_element = nullptr;
    mutable void* m_lastFound = nullptr;   // the attribute that was found last
};

/// Elements in the order of the document.
class WXmlNodeList {
public:
    /// How many there are.
    std::size_t Count() const { return m_nodes.size(); }
    /// The element at a place; nothing beyond the last.
    WXmlNode Node(std::size_t index) const { return index < m_nodes.size() ? m_nodes[index] : WXmlNode(); }
    /// @{
    /// From the first element to behind the last.
    auto begin() const { return m_nodes.begin(); }
    auto end() const { return m_nodes.end(); }
    /// @}
    /// Takes all out; they stay in the document.
    void Clear() { m_nodes.clear(); }
    /// Puts an element behind the others, whatever document it is of.
    void Add(const WXmlNode& node) { m_nodes.push_back(node); }

private:
    std::vector<WXmlNode> m_nodes;
};

/// A document. One thread at a time.
class TVLSIBLINGS_API WXmlDoc {
public:
    /// Elements may nest so deep; a document that goes deeper is refused.
    static constexpr int kMaxDepth = 256;
    /// The most elements of a document; one of more is refused. A suite's workspace has some thousand.
    static constexpr int kMaxElements = 131072;
    /// The most bytes of a document; one of more is refused.
    static constexpr std::size_t kMaxBytes = std::size_t{32} << 20;

    /// @param keepBlanks whether texts of blanks alone are kept
    explicit WXmlDoc(bool keepBlanks);
    WXmlDoc(const WXmlDoc&) = delete;
    WXmlDoc& operator=(const WXmlDoc&) = delete;
    ~WXmlDoc();

    /// Reads a file. False, with a line in the log, when there is none or it is no XML document: the tree is empty then.
    bool Load(const TvlString& path);
    /// Replaces a file in one step; false, with a line in the log, when that fails: the old file is whole then.
    bool Save(const TvlString& path) const;
    /// Reads a stream from its position to its end.
    bool Load(IStream* stream);
    /// Writes to a stream at its position; false when that fails, or when there is no tree.
    bool Save(IStream* stream) const;
    /// Reads a text. False, with a line in the log, when it is no XML document: the tree is empty then.
    bool CreateFromString(const TvlString& text);
    /// As Load of a stream.
    bool CreateFromStream(IStream* stream) { return Load(stream); }
    /// Reads UTF-8 bytes, or those of another encoding that the document names.
    bool LoadBytes(std::string_view bytes);
    /// The document in UTF-8.
    std::string SaveBytes() const;
    /// Whether there is a tree.
    bool IsLoaded() const;
    /// Drops the tree.
    void ReleaseDocument();
    /// The outermost element, or nothing.
    WXmlNode GetRootNode() const;
    /// The elements that an expression selects from the root on; none without a tree.
    WXmlNodeList GetNodes(const WXPath& path) const;

private:
    struct Tree;
    /// @param origin where the bytes come from, for the log
    bool Parse(std::string bytes, const TvlString& origin);

    std::unique_ptr<Tree> m_tree;
    bool m_keepBlanks;
};
