// The types that hosts compile against: every operation, field and variable of the interface. Compiling it is
// the test; an addition to the interface belongs here as well.

#include <MemoryExt.h>
#include <STLCodeTrans.h>
#include <Utility.h>
#include <global_linux.h>

#include <atomic>
#include <cstddef>
#include <cstdio>
#include <ctime>
#include <initializer_list>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using std::FILE, std::size_t, std::string, std::vector, std::wstring;
using Ints = vector<int>;
using Strings = vector<string>;
using Text = const char*;
using ULong = unsigned long;

// The number of functions or members named, each of exactly the stated type: a pointer to it picks an overload
// and converts nothing (but for noexcept).
template <typename Type>
constexpr size_t Pin(std::initializer_list<Type*> functions) {
    return functions.size();
}
template <typename Class, typename Type>
constexpr size_t PinIn(std::initializer_list<Type Class::*> members) {
    return members.size();
}

// clang-format off
static_assert(
    // Last error, log, bytes, commands
    Pin<char*()>({GetLastErrorMsg}) + Pin<void(string, Text, bool)>({WriteLog}) +
    Pin<void(string, Text)>({WriteError}) + Pin<void(FILE*, string)>({WriteLog}) +
    Pin<char*(int, char*, int)>({itoa}) + Pin<char*(char*)>({strlwr, strupr, strrev}) +
    Pin<int(int)>({tolower, toupper}) + Pin<char(char)>({GetUpperLetter, GetLowerLetter}) +
    Pin<bool(char)>({isLetter, isDigit}) + Pin<void(char*, unsigned int)>({toLower}) +
    Pin<void(string&)>({toLower}) + Pin<unsigned int(char*, unsigned int, char)>({deleteChar}) +
    Pin<unsigned int(Text, unsigned int, unsigned int)>({countChar}) +
    Pin<string(const string&, char, Text)>({replaceChar}) + Pin<int(Text, pthread_mutex_t)>({system_run}) +
    // Conversion between encodings
    Pin<size_t(Text, string&)>({ANSIToUTF8}) + Pin<size_t(const string&, wstring&)>({ANSIToUnicode}) +
    Pin<size_t(const wstring&, string&)>({UnicodeToANSI}) + Pin<int(Text, string&)>({UTF8ToANSI}) +
    Pin<size_t(const wchar_t*, ULong, unsigned char**)>({unicode_to_utf8}) +
    Pin<string(wstring)>({unicode_to_utf8}) + Pin<size_t(unsigned char*, wchar_t*)>({utf8_to_unicode}) +
    Pin<wstring(Text)>({utf8_to_unicode, UtfStr2Unicode}) +
    Pin<int(ULong, unsigned char*, int)>({unicode_to_utf8_one}) +
    Pin<size_t(Text, ULong, wchar_t&)>({UTF8Char_ToUnicode}) + Pin<size_t(char*, char*)>({utf8tou}) +
    Pin<void(Text, char*, ULong)>({utoGbk}) + Pin<void(char*, char*)>({utf8toGbk}) +
    Pin<void(unsigned char*)>({dump_utf8}) + Pin<void(wchar_t*, ULong)>({dump_unicode}) +
    Pin<int(Text)>({CodeTrans_Initialize}) + Pin<void()>({CodeTrans_Destroy}) +
    Pin<int(Text, ULong)>({CodeTrans_CodeDetect}) +
    Pin<ULong(int, Text, ULong, char*, ULong&)>(
        {CodeTrans_ToUnicode, CodeTrans_ToUtf8, CodeTrans_ToAnsi, GBKBig5_ToUnicode}) +
    Pin<int(Text, ULong, char*, ULong&)>({vHtmlToText}) + Pin<char(Text)>({x2c}) +
    Pin<int(char*, int, char*, int&)>({iURIDecode}) +
    Pin<ULong(char*, ULong, bool)>({str_normalization, zipname_normalization}) +
    Pin<bool(Text, string&, bool)>({GetAnsiFilename}) + Pin<Text(Text)>({GetDefaultPath}) +
    // Chinese text
    Pin<bool(char*)>({GB2312_Generate, IsForeign, IsAllForeign, QuanJiao2BanJiao}) +
    Pin<bool(Text)>({CC_Generate, IsDelimiter, IsEnglishText, IsValidTitle, IsValidSentence}) +
    Pin<Text(Text, Text)>({CC_Find}) + Pin<size_t(unsigned char*)>({GetCCPrefix}) +
    Pin<bool(unsigned char*)>({IsAllChinese, IsAllNonChinese, IsAllIndex, IsAllLetter, IsAllDelimiter}) +
    Pin<bool(unsigned char*, ULong)>({IsAllSingleByte}) + Pin<size_t(Text, char*)>({Getchar, GetUTF8Char}) +
    Pin<size_t(Text, int*)>({Getchar}) + Pin<int(Text, ULong&, ULong)>({GetCharCode}) +
    Pin<Text(Text, char*)>({sgets}) + Pin<int(Text, ULong&, ULong&, bool)>({CharStat}) +
    Pin<bool(Text, ULong)>({IsAllNum}) + Pin<bool(char*, ULong)>({IsAllChineseNum}) +
    Pin<bool(Text, int)>({IsYearTime}) + Pin<bool(Text, unsigned int)>({IsDayTime}) +
    Pin<char*(char*)>({WordStandard, StrNormalize}) + Pin<size_t(Text, Text, ULong)>({GetCharCount}) +
    Pin<size_t(char*)>({GetForeignCharCount}) + Pin<int(Text)>({GetForeignType}) +
    Pin<bool(Text, char*, char*)>({PostfixSplit}) + Pin<bool(char, char*)>({Delimiter2DictFormat}) +
    Pin<size_t(Text, Text)>({MaxPrefix}) +
    Pin<ULong(Text, ULong, ULong)>({FindSentenceEnd, FindSentenceStart}) +
    Pin<void(Text, string&)>({TextStandard}) + Pin<int(string&, unsigned int, char)>({TextIndent}) +
    Pin<size_t(Text)>({strlen_nospace}) + Pin<int(vector<float>)>({GetMaxIndex}) +
    // Strings
    Pin<char*(char*, Text, char**)>({StrToken}) + Pin<char*(char*, char**, char*, int*, bool)>({StrLine}) +
    Pin<size_t(Text, Strings&, bool)>({Str2CharVector}) +
    Pin<bool(Text, Strings&, Text)>({gfn_bSplit, gfn_bSplitOR}) +
    Pin<size_t(Text, Text, Strings&)>({GetStrVector}) +
    Pin<Text(const Strings&, Text, string&)>({Vector2Str}) + Pin<void(string&, char)>({trim}) +
    Pin<bool(string&)>({gfn_bTrimWord}) + Pin<size_t(string&, Text, Text)>({gfn_vReplaceSubstr}) +
    Pin<int(int, int*, int)>({BinarySearch}) + Pin<int(double, const vector<double>&)>({BinarySearch}) +
    Pin<int(Text, Text*, int)>({BinarySearch, IsExists}) + Pin<int(Text, const Strings&)>({BinarySearch}) +
    Pin<long(Text, ULong, Text*, ULong, ULong)>({BinaryPrefixSearch}) +
    Pin<long(Text, Text*, ULong, long*)>({MaxMatching}) +
    Pin<bool(const string&, string&, string&, string)>({gfn_bGetWordPos}) +
    Pin<int(Text, Text, ULong&, ULong&, int&)>({StrLocate}) + Pin<bool(Text, Text, ULong&, int)>({StrMatch}) +
    Pin<unsigned int(Text, Text, string&)>({prefixMatch}) +
    Pin<bool(const string&, string, string, unsigned int)>({IsInRange}) +
    Pin<unsigned int(Text)>({UrlHash, ELFhash}) + Pin<ULong(Text)>({Tianlhash, Strhash}) +
    Pin<int(Text)>({HfIp}) + Pin<long(Text)>({_hf}) + Pin<double(Text, Text)>({ComputeSim}) +
    Pin<void(Strings&, Text)>({SortByNumber}) +
    // Integer sets, compact storage
    Pin<bool(int, const Ints&)>({IsExists}) + Pin<int(int, const Ints&)>({LocateIndex}) +
    Pin<size_t(const Ints&, const Ints&, int, Ints&)>({Intersection}) + Pin<bool(Ints&, const Ints&)>({Not}) +
    Pin<bool(ULong, ULong)>({IsBalancedValue}) + Pin<int(const vector<ULong>&, int&, bool)>({MergeSelect}) +
    Pin<int(int, unsigned char*)>({int_compress}) + Pin<int(unsigned char*, int*)>({int_uncompress}) +
    Pin<size_t(const string&, FILE*)>({tstring_save}) + Pin<void(string&, FILE*)>({tstring_load}) +
    Pin<int(char**, int&, int&, int, bool)>({WriteBuf}) +
    Pin<bool(double*, double*, int, int, int)>({IsExists}) +
    Pin<int(double*, double*, int)>({filter_data_cmp}) + Pin<int(Text, Text, int)>({filter_data_cmp}) +
    Pin<double*(Text, double*, int)>({str2filter_data}) + Pin<char*(double*, char*, int)>({filter_data2str}) +
    // Files, paths
    Pin<size_t(Text, char**, long, size_t, bool)>({ReadFile}) +
    Pin<size_t(Text, string&, long, size_t, bool)>({ReadFile}) + Pin<size_t(FILE*)>({GetFileLinesCount}) +
    Pin<long(Text)>({get_file_size}) + Pin<size_t(FILE*, int, Strings&)>({ReadNWord}) +
    Pin<bool(Text)>({IsEnglishTextFile}) + Pin<bool(Text, Text, size_t)>({FileCopy}) +
    Pin<long(FILE*, FILE*, size_t, pthread_mutex_t*, size_t)>({FileCopy}) +
    Pin<size_t(FILE*, FILE*, size_t, size_t, unsigned char*, size_t, pthread_mutex_t*)>({FileCopy}) +
    Pin<bool(Text, const string&)>({gfn_bWriteFile, gfn_bAddFile}) +
    Pin<Text(Text, Text, string&)>({GetFileContentById, gfn_GetFilePath}) +
    Pin<void(char*, Text, Text)>({GetFullFileName}) + Pin<char*(Text, Text, char*)>({GetAbsolutePath}) +
    Pin<void(Text, string&, string&, string&)>({GetPathFile}) +
    Pin<char*(Text, char*, char*)>({GetRelevatePath}) + Pin<char*(Text, char*)>({GetFilename}) +
    Pin<string(Text)>({getFilePath}) + Pin<bool(Text, const Strings&)>({IsExtIncluded}) +
    // Dates, extraction
    Pin<char*(const std::time_t&, char*, bool)>({time2str}) + Pin<std::time_t(Text)>({str2time, cstr2time}) +
    Pin<string(long, bool)>({formatDateTime}) + Pin<string(bool)>({getDateTime}) +
    Pin<string()>({getCurDateString}) + Pin<int()>({getCurDate, GetToday}) + Pin<void(char*)>({TimeValue}) +
    Pin<Text(Text, Text, string&, Text)>({GetXMLPropertyValue}) +
    Pin<Text(Text, Text, string&)>({GetXMLItemValue, GetJsonItemValue}) +
    Pin<bool(Text, Text, char*)>({GetXMLItemValue}) + Pin<int(Text, Text)>({GetXMLItemInt, GetJsonItemInt}) +
    Pin<void(Text, vector<_email>&)>({ExtractEmail}) == 173);

static_assert(
    PinIn<CBufferManager, char*(char*)>({&CBufferManager::AddBuffer}) +
    PinIn<CBufferManager, char*(Text)>({&CBufferManager::AddBuffer}) +
    PinIn<CBufferManager, void(bool)>({&CBufferManager::ReleaseBuf}) +
    PinIn<CStrToken, char*(char*, char*, Text)>({&CStrToken::GetToken}) +
    PinIn<CIntArray, int(const Ints&, _tIntArray&)>({&CIntArray::GenerateIntList}) +
    PinIn<CIntArray, size_t(FILE*)>({&CIntArray::Read}) +
    PinIn<CIntArray, size_t(FILE*) const>({&CIntArray::Write}) +
    PinIn<CIntArray, int(int) const>({&CIntArray::GetValue}) +
    PinIn<CIntArray, size_t(_tIntArray, Ints&) const>({&CIntArray::GetVector}) +
    PinIn<CIntArray, bool(const int*, int, const _tIntArray&) const>({&CIntArray::Or, &CIntArray::And}) +
    PinIn<CIntArray, bool(int, const _tIntArray&) const>({&CIntArray::IsExist}) +
    PinIn<CStaticStr, int(Text)>({&CStaticStr::AddString}) +
    PinIn<CStaticStr, Text(int) const>({&CStaticStr::GetStr}) +
    PinIn<CStaticStr, void(FILE*) const>({&CStaticStr::Write}) +
    PinIn<CStaticStr, void(FILE*)>({&CStaticStr::Read}) +
    PinIn<CReadFile, size_t(Text, char**, long, size_t, bool)>({&CReadFile::ReadFile}) +
    PinIn<CReadFile, size_t(Text, string&, long, size_t, bool)>({&CReadFile::ReadFile}) +
    PinIn<_index_digit, bool(const _index_digit&) const>({&_index_digit::operator<}) == 19);
// clang-format on

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

// clang-format off
static_assert(FirstToLast({FIELD(CBufferManager, pthread_mutex_t, m_mutexBuf),
    FIELD(CBufferManager, vector<char*>, m_vBuffers), FIELD(CBufferManager, int, m_nReleasing)}));
static_assert(FirstToLast({FIELD(CStrToken, bool, m_bKeepInnerPunct), FIELD(CStrToken, bool, m_bReachedEnd),
    FIELD(CStrToken, char*, m_pText), FIELD(CStrToken, char*, m_pEnd), FIELD(CStrToken, char, m_cSaved),
    FIELD(CStrToken, vector<char>, m_vSeparators), FIELD(CStrToken, char*, m_pCur)}));
static_assert(FirstToLast({FIELD(CIntArray, int*, m_pData), FIELD(CIntArray, int, m_nCount),
    FIELD(CIntArray, int, m_nCapacity)}));
static_assert(FirstToLast({FIELD(_tIntArray, int, nStart), FIELD(_tIntArray, int, nEnd)}));
static_assert(FirstToLast({FIELD(CStaticStr, char*, m_pBuf), FIELD(CStaticStr, size_t, m_nSize),
    FIELD(CStaticStr, size_t, m_nCapacity)}));
static_assert(FirstToLast({FIELD(CReadFile, string, m_sFileName), FIELD(CReadFile, FILE*, m_fpFileRead),
    FIELD(CReadFile, pthread_mutex_t, m_mutexRead), FIELD(CReadFile, std::atomic<int>, m_nReadCount),
    FIELD(CReadFile, std::atomic<bool>, m_bOpening), FIELD(CReadFile, long, m_nFileSize)}));
static_assert(FirstToLast({FIELD(_index_digit, int, index), FIELD(_index_digit, int, digit)}));
static_assert(FirstToLast({FIELD(_email, string, user), FIELD(_email, string, domain),
    FIELD(_email, string, prefix), FIELD(_email, string, name), FIELD(_email, string, type)}));
// clang-format on

// Plain records take any copy; what owns a block, a lock or a stream takes none, and pools can be moved.
template <typename... Class>
constexpr bool kDefaultConstructible = (std::is_default_constructible_v<Class> && ...);
template <typename... Class>
constexpr bool kUncopyable =
    !(std::is_copy_constructible_v<Class> || ...) && !(std::is_copy_assignable_v<Class> || ...);
template <typename... Class>
constexpr bool kMovable = ((std::is_nothrow_move_constructible_v<Class> &&
                            std::is_nothrow_move_assignable_v<Class>)&&...);
static_assert(kDefaultConstructible<CBufferManager, CIntArray, CStaticStr, CReadFile, _email>);
static_assert(std::is_constructible_v<CStrToken, bool> && std::is_copy_assignable_v<_email>);
static_assert(std::is_trivially_copyable_v<_tIntArray> && std::is_trivially_copyable_v<_index_digit>);
static_assert(kUncopyable<CBufferManager, CReadFile, CIntArray, CStaticStr> && kMovable<CIntArray, CStaticStr>);

// Variables and constants
static_assert(Pin<string>({&g_sLastErrorMessage, &g_sLogPath, &g_sDefaultDir}) == 3);
static_assert(Pin<int>({&g_nEncodeType, &g_nLangType}) + Pin<bool>({&g_bLog}) == 3);
static_assert(Pin<CBufferManager*>({&g_pBufManager}) + Pin<size_t>({&CodeTrans_iTransErrCnt}) == 2);
static_assert(std::is_same_v<decltype(CodeTable), const unsigned short[65536]>);
static_assert(ENCODE_UNKNOWN == 0 && ENCODE_UTF8 == 1 && ENCODE_GBK == 2 && ENCODE_BIG5 == 3 && ENCODE_UNICODE == 8);

// Lengths, file sizes and time values count in 64 bits.
static_assert(sizeof(size_t) == 8 && sizeof(long) == 8 && sizeof(std::time_t) == 8);

}  // namespace
