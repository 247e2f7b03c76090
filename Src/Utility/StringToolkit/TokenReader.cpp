#include "Utility/StringToolkit/TokenReader.h"

#include <cstring>

#include "Internal/ByteSet.h"
#include "Internal/TokenBlanks.h"

using utility::internal::ByteSet;
using utility::internal::IsAsciiDigit;
using utility::internal::ToByte;

namespace {

// Whether the delimiter at `at` belongs to the token around it, as the point of "3.14" or the comma of
// "1,000" does.
bool IsInnerPunct(const char* at, const char* end, const ByteSet& delimiters) {
    const char* const following = at + 1;
    if (following >= end || delimiters.Contains(*following)) return false;
    return *at == '.' || (*at == ',' && IsAsciiDigit(ToByte(*following)));
}

// Where the token at `at` ends: at a delimiter, a NUL or the end of the range.
char* TokenEnd(char* at, const char* end, const ByteSet& delimiters, bool keep_inner_punct) {
    while (at < end && *at != '\0') {
        const bool ends_token = delimiters.Contains(*at) && !(keep_inner_punct && IsInnerPunct(at, end, delimiters));
        if (ends_token) break;
        ++at;
    }
    return at;
}

}  // namespace

CStrToken::CStrToken(bool keep_inner_punct)
    : m_bKeepInnerPunct(keep_inner_punct),
      m_bReachedEnd(false),
      m_pText(nullptr),
      m_pEnd(nullptr),
      m_cSaved('\0'),
      m_pCur(nullptr) {}

CStrToken::~CStrToken() = default;

char* CStrToken::GetToken(char* text, char* end, const char* delims) {
    if (text != nullptr) {
        m_pText = m_pCur = text;
        m_cSaved = '\0';
    }
    if (end != nullptr) {
        m_pEnd = end;
    } else if (text != nullptr) {
        m_pEnd = text + std::strlen(text);
    }
    if (m_pCur == nullptr || m_pCur >= m_pEnd) return nullptr;
    if (m_cSaved != '\0') {
        // The first separator stands where the terminator went, m_pCur on the last one.
        *(m_pCur - (m_vSeparators.size() - 1)) = m_cSaved;
        m_cSaved = '\0';
    }

    const ByteSet delimiters(delims);
    const ByteSet separators = utility::internal::WithTokenBlanks(delimiters);
    while (m_pCur < m_pEnd && separators.Contains(*m_pCur)) ++m_pCur;
    if (m_pCur == m_pEnd) {
        m_bReachedEnd = true;
        return nullptr;
    }

    char* const token = m_pCur;
    m_pCur = TokenEnd(token, m_pEnd, delimiters, m_bKeepInnerPunct);
    const bool is_empty = m_pCur == token;  // a NUL inside the range
    m_bReachedEnd = is_empty || m_pCur == m_pEnd;
    if (!m_bReachedEnd) {
        m_cSaved = *m_pCur;
        *m_pCur = '\0';
    }
    m_vSeparators.assign(1, m_cSaved);
    while (m_pEnd - m_pCur > 1 && separators.Contains(m_pCur[1])) m_vSeparators.push_back(*++m_pCur);
    if (!is_empty) return token;
    ++m_pCur;
    return nullptr;
}
