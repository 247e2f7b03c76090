// compare_conversions [TEXTS [SEED]]: decodes and encodes as TextKit.h does and as iconv and ICU do (where they were
// found when this was configured) and writes down every difference, as Markdown.
//
// First every two-byte code and every code point, each alone; then TEXTS (a million) random and damaged texts in each
// encoding, where a difference is one beyond what the single codes explain. iconv stops at what it cannot decode, so
// what counts is the text in front of that and the place; ICU goes on with U+FFFD, so the whole text counts.

#include <TextKit.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#ifdef COMPARE_ICONV
#include <iconv.h>
#endif
#ifdef COMPARE_ICU
#include <unicode/ucnv.h>
#endif

namespace {

using textkit::Encoding;

// Another converter of one encoding.
class Peer {
public:
    explicit Peer(std::string name) : name_(std::move(name)) {}
    virtual ~Peer() = default;
    // UTF-8 of the bytes. A peer that stops at malformed ones sets `stop` to the offset where it does.
    virtual std::string Decode(std::string_view bytes, std::size_t& stop) = 0;
    // The bytes of one character; empty where the encoding lacks it.
    virtual std::string Encode(std::string_view character) = 0;
    const std::string& name() const { return name_; }

private:
    std::string name_;
};

#ifdef COMPARE_ICONV
class IconvPeer : public Peer {
public:
    explicit IconvPeer(const char* charset)
        : Peer(std::string("iconv ") + charset),
          from_(iconv_open("UTF-8", charset)),
          to_(iconv_open(charset, "UTF-8")) {}
    ~IconvPeer() override {
        iconv_close(from_);
        iconv_close(to_);
    }
    IconvPeer(const IconvPeer&) = delete;
    IconvPeer& operator=(const IconvPeer&) = delete;
    std::string Decode(std::string_view bytes, std::size_t& stop) override { return Convert(from_, bytes, stop); }
    std::string Encode(std::string_view character) override {
        std::size_t stop = textkit::kNoPosition;
        const std::string bytes = Convert(to_, character, stop);
        return stop == textkit::kNoPosition ? bytes : "";
    }

private:
    static std::string Convert(iconv_t converter, std::string_view text, std::size_t& stop) {
        iconv(converter, nullptr, nullptr, nullptr, nullptr);
        std::string result(4 * text.size() + 16, '\0');
        char* in = const_cast<char*>(text.data());
        char* out = result.data();
        std::size_t in_left = text.size(), out_left = result.size();
        if (iconv(converter, &in, &in_left, &out, &out_left) == static_cast<std::size_t>(-1))
            stop = text.size() - in_left;
        else
            iconv(converter, nullptr, nullptr, &out, &out_left);  // what waited for a combining mark
        result.resize(result.size() - out_left);
        return result;
    }
    iconv_t from_, to_;
};
#endif

#ifdef COMPARE_ICU
class IcuPeer : public Peer {
public:
    explicit IcuPeer(const char* charset)
        : Peer(std::string("ICU ") + charset), utf8_(Open("UTF-8")), own_(Open(charset)) {
        ucnv_setFallback(own_.get(), 0);
    }
    std::string Decode(std::string_view bytes, std::size_t&) override { return Convert(utf8_, own_, bytes); }
    std::string Encode(std::string_view character) override {
        UErrorCode error = U_ZERO_ERROR;
        ucnv_setFromUCallBack(own_.get(), UCNV_FROM_U_CALLBACK_SKIP, nullptr, nullptr, nullptr, &error);
        return Convert(own_, utf8_, character);
    }

private:
    using Converter = std::unique_ptr<UConverter, decltype(&ucnv_close)>;
    static Converter Open(const char* charset) {
        UErrorCode error = U_ZERO_ERROR;
        UConverter* const converter = ucnv_open(charset, &error);
        if (U_FAILURE(error)) {
            std::cerr << "compare_conversions: ICU has no " << charset << '\n';
            std::exit(1);
        }
        return {converter, ucnv_close};
    }
    static std::string Convert(const Converter& to, const Converter& from, std::string_view text) {
        std::string result(4 * text.size() + 16, '\0');
        std::vector<UChar> pivot(2 * text.size() + 16);
        char* out = result.data();
        const char* in = text.data();
        UChar *pivot_source = pivot.data(), *pivot_target = pivot.data();
        UErrorCode error = U_ZERO_ERROR;
        ucnv_convertEx(to.get(), from.get(), &out, out + result.size(), &in, in + text.size(), pivot.data(),
                       &pivot_source, &pivot_target, pivot.data() + pivot.size(), 1, 1, &error);
        result.resize(static_cast<std::size_t>(out - result.data()));
        return result;
    }
    Converter utf8_, own_;
};
#endif

std::string Hex(std::string_view bytes) {
    std::string text;
    char digits[3];
    for (const char c : bytes) {
        std::snprintf(digits, sizeof digits, "%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
        text += digits;
    }
    return text;
}

std::u32string CodePoints(std::string_view utf8) {
    const std::string units = textkit::Encode(utf8, Encoding::kUtf16Be).bytes;
    std::u32string code_points;
    for (std::size_t i = 0; i + 1 < units.size(); i += 2) {
        const char32_t unit = static_cast<unsigned char>(units[i]) * 256u + static_cast<unsigned char>(units[i + 1]);
        if ((unit & 0xFC00) == 0xDC00 && !code_points.empty())
            code_points.back() = 0x10000 + ((code_points.back() & 0x3FF) << 10) + (unit & 0x3FF);
        else
            code_points += unit;
    }
    return code_points;
}

bool IsForPrivateUse(std::string_view utf8) {
    const std::u32string code_points = CodePoints(utf8);
    return !code_points.empty() && code_points[0] >= 0xE000 && code_points[0] < 0xF900;
}

// "U+4E2D 中", or "none".
std::string Shown(std::string_view utf8) {
    if (utf8.empty() || utf8.find("\xEF\xBF\xBD") != utf8.npos) return "none";
    std::string text;
    for (const char32_t code_point : CodePoints(utf8)) {
        char digits[16];
        std::snprintf(digits, sizeof digits, "U+%04lX ", static_cast<unsigned long>(code_point));
        text += digits;
    }
    return text + std::string(utf8);
}

// Differences in the order of their codes, those of neighbours with the same verdict on one line.
class DifferenceList {
public:
    void Add(unsigned code, const std::string& kind, const std::string& example) {
        ++count_;
        if (!ranges_.empty() && ranges_.back().kind == kind && code <= ranges_.back().last + 0x30) {
            ranges_.back().last = code;
            ++ranges_.back().count;
        } else {
            ranges_.push_back({code, code, 1, kind, example});
        }
    }
    void Print(const std::string& title) const {
        std::printf("\n%s: %zu\n\n", title.c_str(), count_);
        for (const Range& range : ranges_)
            std::printf("- %zu from %04X to %04X: %s (%s)\n", range.count, range.first, range.last, range.kind.c_str(),
                        range.example.c_str());
    }

private:
    struct Range {
        unsigned first, last;
        std::size_t count;
        std::string kind, example;
    };
    std::vector<Range> ranges_;
    std::size_t count_ = 0;
};

// What the single codes and characters show.
struct Known {
    std::set<std::string> codes;  // bytes that the peer decodes differently
};

std::string Kind(bool ours, bool theirs, std::string_view their_character) {
    if (theirs && IsForPrivateUse(their_character))
        return ours ? "a character for private use to the peer" : "for private use, only the peer has it";
    return !ours ? "only the peer knows it" : !theirs ? "only we know it" : "different";
}

Known CompareCodes(Encoding encoding, Peer& peer) {
    Known known;
    DifferenceList list;
    std::size_t same = 0;
    for (unsigned code = 0x80; code <= 0xFFFF; ++code) {
        if (code > 0xFF && code < 0x8100) continue;
        std::string bytes(1, static_cast<char>(code & 0xFF));
        if (code > 0xFF) bytes.insert(0, 1, static_cast<char>(code >> 8));
        const textkit::Decoded decoded = textkit::Decode(bytes, encoding);
        std::size_t stop = textkit::kNoPosition;
        const std::string theirs = peer.Decode(bytes, stop);
        const bool ours_known = decoded.replaced == 0;
        const bool theirs_known =
            stop == textkit::kNoPosition && theirs.find("\uFFFD") == theirs.npos && !theirs.empty();
        // Two single bytes are no two-byte code.
        if (!ours_known && !theirs_known) continue;
        if (ours_known == theirs_known && decoded.text == theirs) {
            ++same;
            continue;
        }
        known.codes.insert(bytes);
        list.Add(code, Kind(ours_known, theirs_known, theirs),
                 Hex(bytes) + " ours " + (ours_known ? Shown(decoded.text) : "none") + ", theirs " +
                     (theirs_known ? Shown(theirs) : "none"));
    }
    std::printf("\n### %s\n\nCodes decoded alike: %zu\n", peer.name().c_str(), same);
    list.Print("Codes decoded differently");
    return known;
}

void CompareCharacters(Encoding encoding, Peer& peer) {
    DifferenceList list;
    std::size_t same = 0;
    for (unsigned code_point = 0x80; code_point <= 0x2FFFF; ++code_point) {
        if (code_point >= 0xD800 && code_point < 0xE000) continue;
        const char units[] = {static_cast<char>(code_point >> 16), static_cast<char>(code_point >> 8 & 0xFF),
                              static_cast<char>(code_point & 0xFF)};
        std::string utf16(units + 1, 2);
        if (code_point > 0xFFFF) {
            const unsigned high = 0xD800 + ((code_point - 0x10000) >> 10), low = 0xDC00 + (code_point & 0x3FF);
            utf16 = {static_cast<char>(high >> 8), static_cast<char>(high & 0xFF), static_cast<char>(low >> 8),
                     static_cast<char>(low & 0xFF)};
        }
        if (code_point == 0xFEFF) continue;
        const std::string character = textkit::Decode(utf16, Encoding::kUtf16Be).text;
        const textkit::Encoded encoded = textkit::Encode(character, encoding);
        const std::string ours = encoded.replaced == 0 ? encoded.bytes : "", theirs = peer.Encode(character);
        if (ours.empty() && theirs.empty()) continue;
        if (ours == theirs) {
            ++same;
            continue;
        }
        list.Add(code_point, Kind(!ours.empty(), !theirs.empty(), character),
                 Shown(character) + " ours " + (ours.empty() ? "none" : Hex(ours)) + ", theirs " +
                     (theirs.empty() ? "none" : Hex(theirs)));
    }
    std::printf("\nCharacters encoded alike: %zu\n", same);
    list.Print("Characters encoded differently");
}

// Random text in an encoding, and damage to it.
class TextMaker {
public:
    TextMaker(Encoding encoding, unsigned seed) : encoding_(encoding), random_(seed) {}

    std::string Next() {
        const unsigned form = Below(8);
        std::string bytes = form == 0 ? RandomBytes() : textkit::Encode(RandomText(), encoding_).bytes;
        for (unsigned damages = form < 4 ? form : 0; damages > 0 && !bytes.empty(); --damages) {
            const std::size_t place = Below(static_cast<unsigned>(bytes.size()));
            switch (Below(3)) {
                case 0:
                    bytes[place] = static_cast<char>(Below(256));
                    break;
                case 1:
                    bytes.erase(place, 1 + Below(2));
                    break;
                default:
                    bytes.insert(place, 1, static_cast<char>(Below(256)));
            }
        }
        return bytes;
    }

private:
    unsigned Below(unsigned limit) { return static_cast<unsigned>(random_() % limit); }
    std::string RandomBytes() {
        std::string bytes(1 + Below(40), '\0');
        for (char& c : bytes) c = static_cast<char>(Below(4) == 0 ? 0x20 + Below(0x60) : Below(256));
        return bytes;
    }
    std::string RandomText() {
        std::string utf16;
        for (unsigned length = 1 + Below(30); length > 0; --length) {
            const unsigned kind = Below(16);
            const unsigned unit = kind < 5    ? 0x20 + Below(0x5F)
                                  : kind < 12 ? 0x4E00 + Below(0x5200)
                                  : kind < 13 ? 0x3000 + Below(0x100)
                                  : kind < 14 ? 0xFF00 + Below(0x60)
                                  : kind < 15 ? 0x80 + Below(0x2700)
                                              : 0xD840 + Below(0x40);  // a pair's first half
            utf16 += {static_cast<char>(unit >> 8), static_cast<char>(unit & 0xFF)};
            if (kind == 15) utf16 += {static_cast<char>(0xDC + Below(4)), static_cast<char>(Below(256))};
        }
        return textkit::Decode(utf16, Encoding::kUtf16Be).text;
    }

    Encoding encoding_;
    std::mt19937 random_;
};

bool HoldsKnown(const std::string& bytes, const Known& known) {
    for (std::size_t i = 0; i < bytes.size(); ++i)
        if (known.codes.count(bytes.substr(i, 1)) != 0 || known.codes.count(bytes.substr(i, 2)) != 0) return true;
    return false;
}

void CompareTexts(Encoding encoding, Peer& peer, const Known& known, unsigned long texts, unsigned seed) {
    TextMaker maker(encoding, seed);
    unsigned long same = 0, malformed = 0, explained = 0, other = 0;
    std::string examples;
    for (unsigned long i = 0; i < texts; ++i) {
        const std::string bytes = maker.Next();
        textkit::Decoded ours = textkit::Decode(bytes, encoding);
        std::size_t stop = textkit::kNoPosition;
        std::string theirs = peer.Decode(bytes, stop);
        // A mark at the start is no text to us.
        if (theirs.compare(0, 3, "\uFEFF") == 0 && ours.text.compare(0, 3, "\uFEFF") != 0) theirs.erase(0, 3);
        malformed += ours.replaced != 0;
        bool equal = ours.text == theirs;
        if (stop != textkit::kNoPosition)
            equal = ours.first_replaced == stop && textkit::Decode(bytes.substr(0, stop), encoding).text == theirs;
        same += equal;
        if (equal) continue;
        const bool is_known = HoldsKnown(bytes, known);
        ++(is_known ? explained : other);
        constexpr unsigned long kExamples = 8;
        if (!is_known && other <= kExamples)
            examples += "- `" + Hex(bytes) + "` ours `" + Hex(ours.text) + "`, theirs `" + Hex(theirs) + "`\n";
    }
    std::printf(
        "\n%lu texts, %lu of them malformed: %lu alike, %lu different by codes listed above, %lu otherwise\n\n%s",
        texts, malformed, same, explained, other, examples.c_str());
}

}  // namespace

int main(int argc, char** argv) {
    const unsigned long texts = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 1000000;
    const unsigned seed = argc > 2 ? static_cast<unsigned>(std::strtoul(argv[2], nullptr, 10)) : 1;
    const struct {
        Encoding encoding;
        bool double_byte;
        std::vector<const char*> iconv_names, icu_names;
    } rows[] = {
        {Encoding::kGbk, true, {"CP936"}, {"windows-936"}},
        {Encoding::kBig5, true, {"BIG5-HKSCS", "CP950"}, {"Big5-HKSCS", "windows-950"}},
        {Encoding::kUtf8, false, {"UTF-8"}, {"UTF-8"}},
        {Encoding::kUtf16Le, false, {"UTF-16LE"}, {"UTF-16LE"}},
        {Encoding::kUtf16Be, false, {"UTF-16BE"}, {"UTF-16BE"}},
    };
    for (const auto& row : rows) {
        std::printf("\n## %s\n", std::string(textkit::EncodingName(row.encoding)).c_str());
        std::vector<std::unique_ptr<Peer>> peers;
#ifdef COMPARE_ICONV
        for (const char* name : row.iconv_names) peers.push_back(std::make_unique<IconvPeer>(name));
#endif
#ifdef COMPARE_ICU
        for (const char* name : row.icu_names) peers.push_back(std::make_unique<IcuPeer>(name));
#endif
        for (const auto& peer : peers) {
            Known known;
            if (row.double_byte) {
                known = CompareCodes(row.encoding, *peer);
                CompareCharacters(row.encoding, *peer);
            } else {
                std::printf("\n### %s\n", peer->name().c_str());
            }
            CompareTexts(row.encoding, *peer, known, texts, seed);
        }
    }
}
