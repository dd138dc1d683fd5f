#include "tools/pdf/object_mender.h"

#include "tools/pdf/pdf_syntax.h"

#include <algorithm>

namespace tools {

namespace {

constexpr int deepestValue = 100;

bool isInteger(std::string_view token)
{
    return !token.empty() &&
           std::all_of(token.begin(), token.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool isNumber(std::string_view token)
{
    return !token.empty() && token.find_first_not_of("0123456789+-.") == std::string_view::npos &&
           token.find_first_of("0123456789") != std::string_view::npos;
}

/// Reads one value after another.
class Mender
{
public:
    explicit Mender(std::string_view source) : m_source(source) {}

    MendedObject mend(int number);

private:
    std::string_view next();
    std::string_view peek();
    std::string_view stringToken();
    std::string_view hexToken();
    void skipBlanks();
    bool isEnd(std::string_view token) const;
    std::string value(std::string_view token, int depth);
    std::string dictionary(int depth);
    std::string array(int depth);
    std::string number(std::string_view token);

    std::string_view m_source;
    std::size_t m_place = 0;
};

MendedObject Mender::mend(int number)
{
    MendedObject object;
    object.isThere = next() == std::to_string(number);
    if (!object.isThere || !isInteger(next()) || next() != "obj") {
        return object;
    }
    const std::string_view first = next();
    if (isEnd(first)) {
        return object;
    }
    object.text = value(first, 0);
    if (next() == "stream") {
        m_place += m_place < m_source.size() && m_source[m_place] == '\r' ? 1 : 0;
        m_place += m_place < m_source.size() && m_source[m_place] == '\n' ? 1 : 0;
        object.stream = m_place;
    }
    return object;
}

void Mender::skipBlanks()
{
    while (m_place < m_source.size()) {
        if (m_source[m_place] == '%') {
            m_place = std::min(m_source.find_first_of("\r\n", m_place), m_source.size());
        } else if (isSpace(m_source[m_place])) {
            ++m_place;
        } else {
            return;
        }
    }
}

std::string_view Mender::next()
{
    skipBlanks();
    if (m_place == m_source.size()) {
        return {};
    }
    const std::size_t start = m_place;
    const char c = m_source[m_place++];
    const char after = m_place < m_source.size() ? m_source[m_place] : '\0';
    if ((c == '<' && after == '<') || (c == '>' && after == '>')) {
        return m_source.substr(start, (++m_place) - start);
    }
    if (c == '(') {
        return stringToken();
    }
    if (c == '<') {
        return hexToken();
    }
    if (isDelimiter(c) && c != '/') {
        return m_source.substr(start, 1);
    }
    while (m_place < m_source.size() && !isDelimiter(m_source[m_place])) {
        ++m_place;
    }
    return m_source.substr(start, m_place - start);
}

std::string_view Mender::peek()
{
    const std::size_t place = m_place;
    const std::string_view token = next();
    m_place = place;
    return token;
}

std::string_view Mender::stringToken()
{
    const std::size_t start = m_place - 1;
    int depth = 1;
    while (m_place < m_source.size() && depth > 0) {
        const char c = m_source[m_place++];
        depth += c == '(' ? 1 : 0;
        depth -= c == ')' ? 1 : 0;
        m_place += c == '\\' && m_place < m_source.size() ? 1 : 0;
    }
    return depth == 0 ? m_source.substr(start, m_place - start) : std::string_view();
}

std::string_view Mender::hexToken()
{
    const std::size_t start = m_place - 1;
    const std::size_t end = m_source.find('>', m_place);
    m_place = end == std::string_view::npos ? m_source.size() : end + 1;
    return end == std::string_view::npos ? std::string_view()
                                         : m_source.substr(start, m_place - start);
}

bool Mender::isEnd(std::string_view token) const
{
    return token.empty() || token == "endobj" || token == "stream" || token == "obj" ||
           token == "xref" || token == "trailer";
}

std::string Mender::value(std::string_view token, int depth)
{
    if (depth > deepestValue) {
        return "null";
    }
    if (token == "<<") {
        return dictionary(depth + 1);
    }
    if (token == "[") {
        return array(depth + 1);
    }
    if (isNumber(token)) {
        return number(token);
    }
    const bool isKnown = token[0] == '/' || token[0] == '(' || (token[0] == '<' && token != "<") ||
                         token == "true" || token == "false" || token == "null";
    return isKnown ? std::string(token) : "null";
}

std::string Mender::number(std::string_view token)
{
    const std::size_t place = m_place;
    if (isInteger(token) && isInteger(next()) && next() == "R") {
        return std::string(
            m_source.substr(static_cast<std::size_t>(token.data() - m_source.data()),
                            m_place - static_cast<std::size_t>(token.data() - m_source.data())));
    }
    m_place = place;
    return std::string(token);
}

std::string Mender::dictionary(int depth)
{
    std::string text = "<<";
    while (!isEnd(peek())) {
        const std::string_view key = next();
        if (key == ">>") {
            break;
        }
        if (key[0] != '/') {
            continue;
        }
        const std::string_view first = peek();
        if (isEnd(first) || first == ">>") {
            continue;
        }
        text += std::string(key) + " " + value(next(), depth) + "\n";
    }
    return text + ">>";
}

std::string Mender::array(int depth)
{
    std::string text = "[";
    while (!isEnd(peek())) {
        const std::string_view first = peek();
        if (first == ">>") {
            break;
        }
        next();
        if (first == "]") {
            break;
        }
        text += value(first, depth) + " ";
    }
    return text + "]";
}

} // namespace

MendedObject mendObject(std::string_view source, int number)
{
    return Mender(source).mend(number);
}

} // namespace tools
