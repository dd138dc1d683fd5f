#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tools {

/// The kinds of resources that a content stream names.
enum class ResourceKind { font, xObject, graphicsState, colorSpace, pattern, shading, properties };

constexpr std::size_t resourceKindCount = 7;

/// Finds the resource names that content streams use. Bytes may be handed over in any pieces.
///
/// In doubt a name counts as used: an operator that the scanner does not know uses its names as
/// every kind, and behind the data of an inline image, whose end cannot be told for certain, names
/// are looked for in strings too. What is no PDF syntax is passed over the way the most tolerant
/// reader does it.
class ContentScanner
{
public:
    using NameFound = std::function<void(ResourceKind kind, std::string_view name)>;

    explicit ContentScanner(NameFound found) : m_found(std::move(found)) {}

    void feed(const unsigned char *data, std::size_t size);
    void feed(std::string_view text);

    /// The end of one of several streams that make up a page's content. Tokens end there, but a
    /// name cut in two is found as a whole too, because some readers put the streams together as
    /// they are.
    void endStream();

    /// Whether all readers make the same of the content so far. Not so when it ends within a string
    /// or an inline image, and not when it contains what is no hexadecimal string.
    bool isSound() const;

private:
    enum class State {
        between,
        name,
        word,
        number,
        skippedWord,
        angle,
        hexString,
        string,
        escape,
        comment
    };

    void takeBetween(unsigned char byte);
    void takeNumber(const unsigned char *&data, const unsigned char *end);
    bool isWordOfInterest(unsigned char byte) const;
    void takeInHexString(const unsigned char *&data);
    void takeToken(const unsigned char *&data, const unsigned char *end);
    void takeInString(const unsigned char *&data, const unsigned char *end);
    void takeOther(unsigned char byte);
    void joinName(const unsigned char *&data, const unsigned char *end);
    void endName();
    void endWord();
    void report(ResourceKind kind);
    void reportAll(std::string_view name);

    NameFound m_found;
    State m_state = State::between;
    int m_stringDepth = 0;
    bool m_inlineImage = false; ///< between BI and ID
    bool m_uncertain = false;   ///< strings are not told from binary data any more
    bool m_isSound = true;
    std::string m_token;
    std::string m_cutName; ///< name at the end of the stream before
    std::vector<std::string> m_operands;
};

/// @p token of a content stream or file with its #xx escapes undone.
std::string decodeName(std::string_view token);

} // namespace tools
