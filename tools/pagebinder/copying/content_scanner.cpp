#include "tools/pagebinder/copying/content_scanner.h"

#include "tools/pdf/pdf_syntax.h"

#include <algorithm>
#include <cstdint>

namespace tools {

namespace {

constexpr std::size_t mostOperands = 64;
constexpr std::size_t longestToken = 65536;

enum CharacterClass : std::uint8_t { regular, white, delimiter };

constexpr std::array<CharacterClass, 256> makeClasses()
{
    std::array<CharacterClass, 256> classes{};
    for (const unsigned char c : {'\0', '\t', '\n', '\f', '\r', ' '}) {
        classes[c] = white;
    }
    for (const unsigned char c : {'(', ')', '<', '>', '[', ']', '{', '}', '/', '%'}) {
        classes[c] = delimiter;
    }
    return classes;
}

constexpr std::array<CharacterClass, 256> classes = makeClasses();

/// Operators whose operands name no resource.
constexpr std::array<std::string_view, 66> nameless = {
    "\"", "'",  "B",  "B*", "BI", "BMC", "BT", "BX",   "EI",    "EMC",  "ET",
    "EX", "F",  "G",  "J",  "K",  "M",   "MP", "Q",    "RG",    "S",    "SC",
    "T*", "TD", "TJ", "TL", "Tc", "Td",  "Tj", "Tm",   "Tr",    "Ts",   "Tw",
    "Tz", "W",  "W*", "b",  "b*", "c",   "cm", "d",    "d0",    "d1",   "f",
    "f*", "g",  "h",  "i",  "j",  "k",   "l",  "m",    "n",     "q",    "re",
    "rg", "ri", "s",  "sc", "v",  "w",   "y",  "null", "false", "true", "endstream"};

int hexValue(char c)
{
    return c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10;
}

/// Whether a number sign with @p digits behind it stands for another character. The null character
/// cannot be in a name.
bool isEscape(std::string_view digits)
{
    return digits.size() == 2 && isHexDigit(digits[0]) && isHexDigit(digits[1]) && digits != "00";
}

bool isNotRegular(unsigned char byte)
{
    return classes[byte] != regular;
}

bool isInNumber(unsigned char byte)
{
    return (byte >= '0' && byte <= '9') || byte == '.' || byte == '-' || byte == '+';
}

bool kindOf(std::string_view word, ResourceKind &kind)
{
    struct Operator
    {
        std::string_view word;
        ResourceKind kind;
    };
    constexpr std::array<Operator, 10> operators = {{{"Tf", ResourceKind::font},
                                                     {"Do", ResourceKind::xObject},
                                                     {"gs", ResourceKind::graphicsState},
                                                     {"cs", ResourceKind::colorSpace},
                                                     {"CS", ResourceKind::colorSpace},
                                                     {"scn", ResourceKind::pattern},
                                                     {"SCN", ResourceKind::pattern},
                                                     {"sh", ResourceKind::shading},
                                                     {"BDC", ResourceKind::properties},
                                                     {"DP", ResourceKind::properties}}};
    const auto found =
        std::find_if(operators.begin(), operators.end(),
                     [word](const Operator &candidate) { return candidate.word == word; });
    if (found == operators.end()) {
        return false;
    }
    kind = found->kind;
    return true;
}

} // namespace

std::string decodeName(std::string_view token)
{
    std::string name;
    for (std::size_t i = 0; i < token.size(); ++i) {
        const std::string_view digits = token.substr(i + 1, 2);
        if (token[i] == '#' && isEscape(digits)) {
            name += static_cast<char>(hexValue(digits[0]) * 16 + hexValue(digits[1]));
            i += 2;
        } else {
            name += token[i];
        }
    }
    return name;
}

void ContentScanner::feed(std::string_view text)
{
    feed(reinterpret_cast<const unsigned char *>(text.data()), text.size());
}

void ContentScanner::feed(const unsigned char *data, std::size_t size)
{
    const unsigned char *const end = data + size;
    if (!m_cutName.empty()) {
        joinName(data, end);
    }
    while (data != end) {
        switch (m_state) {
        case State::between:
            takeBetween(*data++);
            break;
        case State::name:
        case State::word:
            takeToken(data, end);
            break;
        case State::skippedWord:
            data = std::find_if(data, end, isNotRegular);
            if (data != end) {
                m_state = State::between;
            }
            break;
        case State::number:
            takeNumber(data, end);
            break;
        case State::string:
            takeInString(data, end);
            break;
        case State::angle:
            m_state = *data == '<' ? State::between : State::hexString;
            data += *data == '<' ? 1 : 0;
            break;
        case State::hexString:
            takeInHexString(data);
            break;
        default:
            takeOther(*data++);
            break;
        }
    }
}

void ContentScanner::joinName(const unsigned char *&data, const unsigned char *end)
{
    const unsigned char *const last = std::find_if(data, end, isNotRegular);
    if (last != data) {
        reportAll(decodeName(m_cutName + std::string(data, last)));
    }
    m_cutName.clear();
}

void ContentScanner::takeToken(const unsigned char *&data, const unsigned char *end)
{
    const unsigned char *const last = std::find_if(data, end, isNotRegular);
    if (m_token.size() < longestToken) {
        m_token.append(data, last);
    } else {
        m_isSound = false;
    }
    data = last;
    if (data == end) {
        return;
    }
    if (m_state == State::name) {
        endName();
    } else {
        endWord();
    }
}

void ContentScanner::takeNumber(const unsigned char *&data, const unsigned char *end)
{
    data = std::find_if_not(data, end, isInNumber);
    if (data == end) {
        return;
    }
    // An operator may follow a number without a blank.
    m_token.clear();
    m_state = isNotRegular(*data)       ? State::between
              : isWordOfInterest(*data) ? State::word
                                        : State::skippedWord;
}

void ContentScanner::takeInHexString(const unsigned char *&data)
{
    const unsigned char byte = *data;
    if (isHexDigit(static_cast<char>(byte)) || classes[byte] == white) {
        ++data;
        return;
    }
    m_state = State::between;
    if (byte == '>') {
        ++data;
    } else {
        // Some readers look for the end of the string, others go on with the next operator.
        m_isSound = false;
    }
}

void ContentScanner::takeInString(const unsigned char *&data, const unsigned char *end)
{
    data = std::find_if(
        data, end, [](unsigned char byte) { return byte == '(' || byte == ')' || byte == '\\'; });
    if (data == end) {
        return;
    }
    const unsigned char byte = *data++;
    if (byte == '\\') {
        m_state = State::escape;
    } else if (byte == '(') {
        ++m_stringDepth;
    } else if (--m_stringDepth == 0) {
        m_state = State::between;
    }
}

void ContentScanner::takeOther(unsigned char byte)
{
    if (m_state == State::escape) {
        m_state = State::string;
    } else if (byte == '\n' || byte == '\r') {
        m_state = State::between;
    }
}

void ContentScanner::takeBetween(unsigned char byte)
{
    if (isInNumber(byte)) {
        m_state = State::number;
    } else if (classes[byte] == regular) {
        m_state = isWordOfInterest(byte) ? State::word : State::skippedWord;
        m_token.assign(1, static_cast<char>(byte));
    } else if (byte == '/') {
        m_token.clear();
        m_state = State::name;
    } else if (m_uncertain) {
        return;
    } else if (byte == '(') {
        m_stringDepth = 1;
        m_state = State::string;
    } else if (byte == '<') {
        m_state = State::angle;
    } else if (byte == '%') {
        m_state = State::comment;
    }
}

bool ContentScanner::isWordOfInterest(unsigned char byte) const
{
    // Only words that may end operands, and the begin of an inline image.
    return !m_operands.empty() || m_inlineImage || byte == 'B';
}

bool ContentScanner::isSound() const
{
    const bool ended = m_state == State::between || m_state == State::comment;
    return m_isSound && ended && !m_inlineImage;
}

void ContentScanner::endStream()
{
    const std::string name = m_state == State::name ? m_token : std::string();
    feed("\n");
    m_cutName = name;
}

void ContentScanner::endName()
{
    m_state = State::between;
    if (m_operands.size() == mostOperands) {
        reportAll(m_operands.front());
        m_operands.erase(m_operands.begin());
    }
    m_operands.push_back(decodeName(m_token));
}

void ContentScanner::endWord()
{
    m_state = State::between;
    if (m_token == "BI") {
        m_inlineImage = true;
    } else if (m_token == "ID" && m_inlineImage) {
        report(ResourceKind::colorSpace);
        m_uncertain = true;
        m_inlineImage = false;
    }
    if (m_operands.empty()) {
        return;
    }
    ResourceKind kind = ResourceKind::font;
    if (kindOf(m_token, kind)) {
        report(kind);
    } else if (!m_inlineImage && !m_uncertain &&
               std::find(nameless.begin(), nameless.end(), m_token) == nameless.end()) {
        for (const std::string &name : m_operands) {
            reportAll(name);
        }
    }
    if (!m_inlineImage) {
        m_operands.clear();
    }
}

void ContentScanner::report(ResourceKind kind)
{
    for (const std::string &name : m_operands) {
        m_found(kind, name);
    }
    if (m_inlineImage) {
        m_operands.clear();
    }
}

void ContentScanner::reportAll(std::string_view name)
{
    for (std::size_t kind = 0; kind < resourceKindCount; ++kind) {
        m_found(static_cast<ResourceKind>(kind), name);
    }
}

} // namespace tools
