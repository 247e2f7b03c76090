#include "Utility/StringToolkit/TokenReader.h"

#include <cstring>

#include "Internal/Bytes.h"
#include "Internal/TokenScan.h"

using utility::internal::FindTokenEnd;
using utility::internal::IsAsciiDigit;
using utility::internal::IsDelimiter;
using utility::internal::IsTokenBlank;
using utility::internal::ToByte;

namespace {

bool IsSeparator(char byte, const char* delims) {
    return IsTokenBlank(byte) || (byte != '\0' && IsDelimiter(byte, delims));
}

// Whether the delimiter at `at` belongs to the token around it, as the point of "3.14" or the comma of
// "1,000" does.
bool IsInnerPunct(const char* at, const char* end, const char* delims) {
    const char* const following = at + 1;
    if (following >= end || (*following != '\0' && IsDelimiter(*following, delims))) return false;
    return *at == '.' || (*at == ',' && IsAsciiDigit(ToByte(*following)));
}

struct Token {
    char *begin, *end;  // alike where a NUL inside the range stands for the token
};

// The token at or behind `at`, or where the range ends.
Token FindToken(char* at, char* end, const char* delims, bool keep_inner_punct) {
    // The first byte is the last separator as a rule. Behind it a token is taken for granted: no more than the search
    // for its end tells that it is none.
    if (at < end && IsSeparator(*at, delims)) ++at;
    for (; at < end; ++at) {
        if (IsTokenBlank(*at)) continue;
        char* token_end = at + (FindTokenEnd(at, delims) - at);
        if (token_end == at && *at != '\0') continue;
        while (keep_inner_punct && token_end < end && *token_end != '\0' && IsInnerPunct(token_end, end, delims))
            token_end += 1 + (FindTokenEnd(token_end + 1, delims) - (token_end + 1));
        return {at, token_end < end ? token_end : end};
    }
    return {end, end};
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

    const Token token = FindToken(m_pCur, m_pEnd, delims, m_bKeepInnerPunct);
    m_pCur = token.end;
    if (token.begin == m_pEnd) {
        m_bReachedEnd = true;
        return nullptr;
    }
    const bool is_empty = token.begin == token.end;
    m_bReachedEnd = is_empty || m_pCur == m_pEnd;
    if (!m_bReachedEnd) {
        m_cSaved = *m_pCur;
        *m_pCur = '\0';
    }
    m_vSeparators.clear();
    m_vSeparators.push_back(m_cSaved);
    while (m_pEnd - m_pCur > 1 && IsSeparator(m_pCur[1], delims)) m_vSeparators.push_back(*++m_pCur);
    if (!is_empty) return token.begin;
    ++m_pCur;
    return nullptr;
}
