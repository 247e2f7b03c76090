// The types that hosts compile against: every operation, field and variable of the interface. Compiling it is the
// test; an addition to the interface belongs here as well.

#include <MemoryExt.h>
#include <STLCodeTrans.h>
#include <Utility.h>
#include <global_linux.h>

#include <atomic>
#include <cstddef>
#include <cstdio>
#include <ctime>
#include <initializer_list>
#include <iterator>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using std::FILE;
using std::size_t;
using std::string;
using std::vector;
using std::wstring;
using Strings = vector<string>;
using Ints = vector<int>;

template <auto kOperation>
constexpr bool kDeclared = true;

// A cast between function pointers picks an overload and converts nothing (but for noexcept): anything else than
// exactly these types is an error.
#define FUNCTION(result, name, ...) kDeclared<static_cast<result (*)(__VA_ARGS__)>(&name)>
#define MEMBER(result, type, name, ...) kDeclared<static_cast<result (type::*)(__VA_ARGS__)>(&type::name)>
#define CONST_MEMBER(result, type, name, ...) \
    kDeclared<static_cast<result (type::*)(__VA_ARGS__) const>(&type::name)>

constexpr bool kFunctions[] = {
    // Last error, log, bytes, commands
    FUNCTION(char*, GetLastErrorMsg, void),
    FUNCTION(void, WriteLog, string, const char*, bool),
    FUNCTION(void, WriteError, string, const char*),
    FUNCTION(void, WriteLog, FILE*, string),
    FUNCTION(char*, itoa, int, char*, int),
    FUNCTION(char*, strlwr, char*),
    FUNCTION(char*, strupr, char*),
    FUNCTION(char*, strrev, char*),
    FUNCTION(int, tolower, int),
    FUNCTION(int, toupper, int),
    FUNCTION(char, GetUpperLetter, char),
    FUNCTION(char, GetLowerLetter, char),
    FUNCTION(bool, isLetter, char),
    FUNCTION(bool, isDigit, char),
    FUNCTION(void, toLower, char*, unsigned int),
    FUNCTION(void, toLower, string&),
    FUNCTION(unsigned int, deleteChar, char*, unsigned int, char),
    FUNCTION(unsigned int, countChar, const char*, unsigned int, unsigned int),
    FUNCTION(string, replaceChar, const string&, char, const char*),
    FUNCTION(int, system_run, const char*, pthread_mutex_t),

    // Conversion between encodings
    FUNCTION(size_t, ANSIToUTF8, const char*, string&),
    FUNCTION(size_t, ANSIToUnicode, const string&, wstring&),
    FUNCTION(size_t, UnicodeToANSI, const wstring&, string&),
    FUNCTION(int, UTF8ToANSI, const char*, string&),
    FUNCTION(size_t, unicode_to_utf8, const wchar_t*, unsigned long, unsigned char**),
    FUNCTION(string, unicode_to_utf8, wstring),
    FUNCTION(size_t, utf8_to_unicode, unsigned char*, wchar_t*),
    FUNCTION(wstring, utf8_to_unicode, const char*),
    FUNCTION(wstring, UtfStr2Unicode, const char*),
    FUNCTION(int, unicode_to_utf8_one, unsigned long, unsigned char*, int),
    FUNCTION(size_t, UTF8Char_ToUnicode, const char*, unsigned long, wchar_t&),
    FUNCTION(size_t, utf8tou, char*, char*),
    FUNCTION(void, utoGbk, const char*, char*, unsigned long),
    FUNCTION(void, utf8toGbk, char*, char*),
    FUNCTION(void, dump_utf8, unsigned char*),
    FUNCTION(void, dump_unicode, wchar_t*, unsigned long),
    FUNCTION(int, CodeTrans_Initialize, const char*),
    FUNCTION(void, CodeTrans_Destroy, void),
    FUNCTION(int, CodeTrans_CodeDetect, const char*, unsigned long),
    FUNCTION(unsigned long, CodeTrans_ToUnicode, int, const char*, unsigned long, char*, unsigned long&),
    FUNCTION(unsigned long, CodeTrans_ToUtf8, int, const char*, unsigned long, char*, unsigned long&),
    FUNCTION(unsigned long, CodeTrans_ToAnsi, int, const char*, unsigned long, char*, unsigned long&),
    FUNCTION(unsigned long, GBKBig5_ToUnicode, int, const char*, unsigned long, char*, unsigned long&),
    FUNCTION(int, vHtmlToText, const char*, unsigned long, char*, unsigned long&),
    FUNCTION(char, x2c, const char*),
    FUNCTION(int, iURIDecode, char*, int, char*, int&),
    FUNCTION(unsigned long, str_normalization, char*, unsigned long, bool),
    FUNCTION(unsigned long, zipname_normalization, char*, unsigned long, bool),
    FUNCTION(bool, GetAnsiFilename, const char*, string&, bool),
    FUNCTION(const char*, GetDefaultPath, const char*),

    // Chinese text
    FUNCTION(bool, GB2312_Generate, char*),
    FUNCTION(bool, CC_Generate, const char*),
    FUNCTION(const char*, CC_Find, const char*, const char*),
    FUNCTION(size_t, GetCCPrefix, unsigned char*),
    FUNCTION(bool, IsAllChinese, unsigned char*),
    FUNCTION(bool, IsAllNonChinese, unsigned char*),
    FUNCTION(bool, IsAllSingleByte, unsigned char*, unsigned long),
    FUNCTION(bool, IsAllIndex, unsigned char*),
    FUNCTION(bool, IsAllLetter, unsigned char*),
    FUNCTION(bool, IsAllDelimiter, unsigned char*),
    FUNCTION(bool, IsDelimiter, const char*),
    FUNCTION(size_t, Getchar, const char*, char*),
    FUNCTION(size_t, Getchar, const char*, int*),
    FUNCTION(size_t, GetUTF8Char, const char*, char*),
    FUNCTION(int, GetCharCode, const char*, unsigned long&, unsigned long),
    FUNCTION(const char*, sgets, const char*, char*),
    FUNCTION(int, CharStat, const char*, unsigned long&, unsigned long&, bool),
    FUNCTION(bool, IsEnglishText, const char*),
    FUNCTION(bool, IsAllNum, const char*, unsigned long),
    FUNCTION(bool, IsAllChineseNum, char*, unsigned long),
    FUNCTION(bool, IsYearTime, const char*, int),
    FUNCTION(bool, IsDayTime, const char*, unsigned int),
    FUNCTION(char*, WordStandard, char*),
    FUNCTION(size_t, GetCharCount, const char*, const char*, unsigned long),
    FUNCTION(size_t, GetForeignCharCount, char*),
    FUNCTION(bool, IsForeign, char*),
    FUNCTION(bool, IsAllForeign, char*),
    FUNCTION(int, GetForeignType, const char*),
    FUNCTION(bool, PostfixSplit, const char*, char*, char*),
    FUNCTION(bool, Delimiter2DictFormat, char, char*),
    FUNCTION(size_t, MaxPrefix, const char*, const char*),
    FUNCTION(unsigned long, FindSentenceEnd, const char*, unsigned long, unsigned long),
    FUNCTION(unsigned long, FindSentenceStart, const char*, unsigned long, unsigned long),
    FUNCTION(bool, IsValidTitle, const char*),
    FUNCTION(bool, IsValidSentence, const char*),
    FUNCTION(bool, QuanJiao2BanJiao, char*),
    FUNCTION(void, TextStandard, const char*, string&),
    FUNCTION(int, TextIndent, string&, unsigned int, char),
    FUNCTION(size_t, strlen_nospace, const char*),
    FUNCTION(int, GetMaxIndex, vector<float>),
    FUNCTION(char*, StrNormalize, char*),

    // Strings
    FUNCTION(char*, StrToken, char*, const char*, char**),
    FUNCTION(char*, StrLine, char*, char**, char*, int*, bool),
    FUNCTION(size_t, Str2CharVector, const char*, Strings&, bool),
    FUNCTION(bool, gfn_bSplit, const char*, Strings&, const char*),
    FUNCTION(bool, gfn_bSplitOR, const char*, Strings&, const char*),
    FUNCTION(size_t, GetStrVector, const char*, const char*, Strings&),
    FUNCTION(const char*, Vector2Str, const Strings&, const char*, string&),
    FUNCTION(void, trim, string&, char),
    FUNCTION(bool, gfn_bTrimWord, string&),
    FUNCTION(size_t, gfn_vReplaceSubstr, string&, const char*, const char*),
    FUNCTION(int, BinarySearch, int, int*, int),
    FUNCTION(int, BinarySearch, double, const vector<double>&),
    FUNCTION(int, BinarySearch, const char*, const char**, int),
    FUNCTION(int, BinarySearch, const char*, const Strings&),
    FUNCTION(long, BinaryPrefixSearch, const char*, unsigned long, const char**, unsigned long,
             unsigned long),
    FUNCTION(long, MaxMatching, const char*, const char**, unsigned long, long*),
    FUNCTION(int, IsExists, const char*, const char**, int),
    FUNCTION(bool, gfn_bGetWordPos, const string&, string&, string&, string),
    FUNCTION(int, StrLocate, const char*, const char*, unsigned long&, unsigned long&, int&),
    FUNCTION(bool, StrMatch, const char*, const char*, unsigned long&, int),
    FUNCTION(unsigned int, prefixMatch, const char*, const char*, string&),
    FUNCTION(bool, IsInRange, const string&, string, string, unsigned int),
    FUNCTION(unsigned int, UrlHash, const char*),
    FUNCTION(unsigned int, ELFhash, const char*),
    FUNCTION(unsigned long, Tianlhash, const char*),
    FUNCTION(int, HfIp, const char*),
    FUNCTION(long, _hf, const char*),
    FUNCTION(unsigned long, Strhash, const char*),
    FUNCTION(double, ComputeSim, const char*, const char*),
    FUNCTION(void, SortByNumber, Strings&, const char*),

    // Integer sets, compact storage
    FUNCTION(bool, IsExists, int, const Ints&),
    FUNCTION(int, LocateIndex, int, const Ints&),
    FUNCTION(size_t, Intersection, const Ints&, const Ints&, int, Ints&),
    FUNCTION(bool, Not, Ints&, const Ints&),
    FUNCTION(bool, IsBalancedValue, unsigned long, unsigned long),
    FUNCTION(int, MergeSelect, const vector<unsigned long>&, int&, bool),
    FUNCTION(int, int_compress, int, unsigned char*),
    FUNCTION(int, int_uncompress, unsigned char*, int*),
    FUNCTION(size_t, tstring_save, const string&, FILE*),
    FUNCTION(void, tstring_load, string&, FILE*),
    FUNCTION(int, WriteBuf, char**, int&, int&, int, bool),
    FUNCTION(bool, IsExists, double*, double*, int, int, int),
    FUNCTION(int, filter_data_cmp, double*, double*, int),
    FUNCTION(int, filter_data_cmp, const char*, const char*, int),
    FUNCTION(double*, str2filter_data, const char*, double*, int),
    FUNCTION(char*, filter_data2str, double*, char*, int),

    // Files, paths
    FUNCTION(size_t, ReadFile, const char*, char**, long, size_t, bool),
    FUNCTION(size_t, ReadFile, const char*, string&, long, size_t, bool),
    FUNCTION(size_t, GetFileLinesCount, FILE*),
    FUNCTION(long, get_file_size, const char*),
    FUNCTION(size_t, ReadNWord, FILE*, int, Strings&),
    FUNCTION(bool, IsEnglishTextFile, const char*),
    FUNCTION(bool, FileCopy, const char*, const char*, size_t),
    FUNCTION(long, FileCopy, FILE*, FILE*, size_t, pthread_mutex_t*, size_t),
    FUNCTION(size_t, FileCopy, FILE*, FILE*, size_t, size_t, unsigned char*, size_t, pthread_mutex_t*),
    FUNCTION(bool, gfn_bWriteFile, const char*, const string&),
    FUNCTION(bool, gfn_bAddFile, const char*, const string&),
    FUNCTION(const char*, GetFileContentById, const char*, const char*, string&),
    FUNCTION(void, GetFullFileName, char*, const char*, const char*),
    FUNCTION(char*, GetAbsolutePath, const char*, const char*, char*),
    FUNCTION(void, GetPathFile, const char*, string&, string&, string&),
    FUNCTION(char*, GetRelevatePath, const char*, char*, char*),
    FUNCTION(char*, GetFilename, const char*, char*),
    FUNCTION(string, getFilePath, const char*),
    FUNCTION(bool, IsExtIncluded, const char*, const Strings&),
    FUNCTION(const char*, gfn_GetFilePath, const char*, const char*, string&),

    // Dates, extraction
    FUNCTION(char*, time2str, const std::time_t&, char*, bool),
    FUNCTION(std::time_t, str2time, const char*),
    FUNCTION(std::time_t, cstr2time, const char*),
    FUNCTION(string, formatDateTime, long, bool),
    FUNCTION(string, getDateTime, bool),
    FUNCTION(string, getCurDateString, void),
    FUNCTION(int, getCurDate, void),
    FUNCTION(int, GetToday, void),
    FUNCTION(void, TimeValue, char*),
    FUNCTION(const char*, GetXMLPropertyValue, const char*, const char*, string&, const char*),
    FUNCTION(const char*, GetXMLItemValue, const char*, const char*, string&),
    FUNCTION(bool, GetXMLItemValue, const char*, const char*, char*),
    FUNCTION(int, GetXMLItemInt, const char*, const char*),
    FUNCTION(const char*, GetJsonItemValue, const char*, const char*, string&),
    FUNCTION(int, GetJsonItemInt, const char*, const char*),
    FUNCTION(void, ExtractEmail, const char*, vector<_email>&),
};
static_assert(std::size(kFunctions) == 173);

constexpr bool kMembers[] = {
    std::is_default_constructible_v<CBufferManager>,
    std::is_destructible_v<CBufferManager>,
    MEMBER(char*, CBufferManager, AddBuffer, char*),
    MEMBER(char*, CBufferManager, AddBuffer, const char*),
    MEMBER(void, CBufferManager, ReleaseBuf, bool),
    std::is_constructible_v<CStrToken, bool>,
    std::is_destructible_v<CStrToken>,
    MEMBER(char*, CStrToken, GetToken, char*, char*, const char*),
    std::is_default_constructible_v<CIntArray>,
    std::is_destructible_v<CIntArray>,
    MEMBER(int, CIntArray, GenerateIntList, const Ints&, _tIntArray&),
    CONST_MEMBER(size_t, CIntArray, Write, FILE*),
    MEMBER(size_t, CIntArray, Read, FILE*),
    CONST_MEMBER(int, CIntArray, GetValue, int),
    CONST_MEMBER(size_t, CIntArray, GetVector, _tIntArray, Ints&),
    CONST_MEMBER(bool, CIntArray, Or, const int*, int, const _tIntArray&),
    CONST_MEMBER(bool, CIntArray, IsExist, int, const _tIntArray&),
    CONST_MEMBER(bool, CIntArray, And, const int*, int, const _tIntArray&),
    std::is_default_constructible_v<CStaticStr>,
    std::is_destructible_v<CStaticStr>,
    MEMBER(int, CStaticStr, AddString, const char*),
    CONST_MEMBER(const char*, CStaticStr, GetStr, int),
    CONST_MEMBER(void, CStaticStr, Write, FILE*),
    MEMBER(void, CStaticStr, Read, FILE*),
    std::is_default_constructible_v<CReadFile>,
    std::is_destructible_v<CReadFile>,
    MEMBER(size_t, CReadFile, ReadFile, const char*, char**, long, size_t, bool),
    MEMBER(size_t, CReadFile, ReadFile, const char*, string&, long, size_t, bool),
    CONST_MEMBER(bool, _index_digit, operator<, const _index_digit&),
};
static_assert(std::size(kMembers) == 29);

constexpr bool All(const bool* first, const bool* last) {
    return first == last || (*first && All(first + 1, last));
}
static_assert(All(std::begin(kMembers), std::end(kMembers)), "a class cannot be constructed or destroyed");

template <typename Stated, typename Class, typename Type>
constexpr size_t FieldAt(Type Class::*, size_t offset) {
    static_assert(std::is_same_v<Stated, Type> && std::is_standard_layout_v<Class>);
    return offset;
}

constexpr bool FirstToLast(std::initializer_list<size_t> offsets) {
    for (const size_t* offset = offsets.begin() + 1; offset != offsets.end(); ++offset)
        if (*offset <= *(offset - 1)) return false;
    return *offsets.begin() == 0;
}

#define FIELD(class_name, type, name) FieldAt<type>(&class_name::name, offsetof(class_name, name))

static_assert(FirstToLast({FIELD(CBufferManager, pthread_mutex_t, m_mutexBuf),
                           FIELD(CBufferManager, vector<char*>, m_vBuffers),
                           FIELD(CBufferManager, int, m_nReleasing)}));
static_assert(FirstToLast({FIELD(CStrToken, bool, m_bKeepInnerPunct), FIELD(CStrToken, bool, m_bReachedEnd),
                           FIELD(CStrToken, char*, m_pText), FIELD(CStrToken, char*, m_pEnd),
                           FIELD(CStrToken, char, m_cSaved), FIELD(CStrToken, vector<char>, m_vSeparators),
                           FIELD(CStrToken, char*, m_pCur)}));
static_assert(FirstToLast({FIELD(CIntArray, int*, m_pData), FIELD(CIntArray, int, m_nCount),
                           FIELD(CIntArray, int, m_nCapacity)}));
static_assert(FirstToLast({FIELD(_tIntArray, int, nStart), FIELD(_tIntArray, int, nEnd)}));
static_assert(FirstToLast({FIELD(CStaticStr, char*, m_pBuf), FIELD(CStaticStr, size_t, m_nSize),
                           FIELD(CStaticStr, size_t, m_nCapacity)}));
static_assert(FirstToLast({FIELD(CReadFile, string, m_sFileName), FIELD(CReadFile, FILE*, m_fpFileRead),
                           FIELD(CReadFile, pthread_mutex_t, m_mutexRead),
                           FIELD(CReadFile, std::atomic<int>, m_nReadCount),
                           FIELD(CReadFile, std::atomic<bool>, m_bOpening),
                           FIELD(CReadFile, long, m_nFileSize)}));
static_assert(FirstToLast({FIELD(_index_digit, int, index), FIELD(_index_digit, int, digit)}));
static_assert(FirstToLast({FIELD(_email, string, user), FIELD(_email, string, domain),
                           FIELD(_email, string, prefix), FIELD(_email, string, name),
                           FIELD(_email, string, type)}));

// Plain records take any copy; what owns a block, a lock or a stream takes none, and pools can be moved.
static_assert(std::is_trivially_copyable_v<_tIntArray> && std::is_trivially_copyable_v<_index_digit>);
static_assert(std::is_default_constructible_v<_email> && std::is_copy_assignable_v<_email>);
template <typename Class>
constexpr bool kUncopyable = !std::is_copy_constructible_v<Class> && !std::is_copy_assignable_v<Class>;
static_assert(kUncopyable<CBufferManager> && kUncopyable<CReadFile>);
static_assert(kUncopyable<CIntArray> && std::is_nothrow_move_constructible_v<CIntArray> &&
              std::is_nothrow_move_assignable_v<CIntArray>);
static_assert(kUncopyable<CStaticStr> && std::is_nothrow_move_constructible_v<CStaticStr> &&
              std::is_nothrow_move_assignable_v<CStaticStr>);

// Variables and constants
static_assert(std::is_same_v<decltype(g_sLastErrorMessage), string>);
static_assert(std::is_same_v<decltype(g_nEncodeType), int>);
static_assert(std::is_same_v<decltype(g_nLangType), int>);
static_assert(std::is_same_v<decltype(g_bLog), bool>);
static_assert(std::is_same_v<decltype(g_sLogPath), string>);
static_assert(std::is_same_v<decltype(g_sDefaultDir), string>);
static_assert(std::is_same_v<decltype(g_pBufManager), CBufferManager*>);
static_assert(std::is_same_v<decltype(CodeTrans_iTransErrCnt), size_t>);
static_assert(std::is_same_v<decltype(CodeTable), const unsigned short[65536]>);
static_assert(ENCODE_UNKNOWN == 0 && ENCODE_UTF8 == 1 && ENCODE_GBK == 2 && ENCODE_BIG5 == 3 &&
              ENCODE_UNICODE == 8);

// Lengths, file sizes and time values count in 64 bits.
static_assert(sizeof(size_t) == 8 && sizeof(long) == 8 && sizeof(std::time_t) == 8);

}  // namespace
