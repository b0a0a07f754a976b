// validateUTF8String, splitPathIntoSegments and containsDotSegments against plain reference
// implementations of their documented behaviour. The first byte picks the function.

#include "fuzz/FuzzSupport.h"
#include "iri/grammar/Unicode.h"
#include "iri/path/PathSegments.h"

namespace {

using namespace foundation::network::iri::detail;

// Strict UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF.
bool isStrictUtf8(const std::string& bytes) {
    constexpr std::uint32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    for (std::size_t i = 0, length = 0; i < bytes.size(); i += length) {
        std::uint32_t value = 0;
        length = fnfuzz::utf8Sequence(bytes, i, value);
        if (length == 0 || value < kLeast[length] || value > 0x10FFFF ||
            (value >= 0xD800 && value <= 0xDFFF)) {
            return false;
        }
    }
    return true;
}

// The repair: sequences of 1 to 6 bytes that are complete by their lead byte are copied; any
// other byte becomes an upper-case "%XX".
std::string repair(const std::string& bytes) {
    std::string out;
    for (std::size_t i = 0, length = 0; i < bytes.size(); i += length) {
        std::uint32_t value = 0;
        length = fnfuzz::utf8Sequence(bytes, i, value, 6);
        char escape[4];
        std::snprintf(escape, sizeof escape, "%%%02X", static_cast<unsigned char>(bytes[i]));
        out += length != 0 ? bytes.substr(i, length) : escape;
        length = std::max<std::size_t>(length, 1);
    }
    return out;
}

// A leading "//" followed by a segment stays one element; otherwise a bare first segment, then
// one element per "/" holding it and the segment after it (empty segments give "/" alone).
std::vector<std::u16string> referenceSplit(const std::u16string& path) {
    const bool twoSlashes = path.size() > 2 && path.compare(0, 2, u"//") == 0 && path[2] != u'/';
    std::vector<std::u16string> out;
    for (std::size_t i = 0, end = 0; i < path.size(); i = end) {
        const std::size_t from = path[i] != u'/' ? i : i == 0 && twoSlashes ? 2 : i + 1;
        end = std::min(path.find(u'/', from), path.size());
        out.push_back(path.substr(i, end - i));
    }
    return out;
}

// Any "." or ".." segment, except the kept blind spot: in a path of three or more characters
// ending "/./", that last "." is not seen.
bool referenceDotSegments(std::u16string path) {
    if (path.size() >= 3 && path.compare(path.size() - 3, 3, u"/./") == 0) {
        path.resize(path.size() - 2);
    }
    path = u"/" + path + u"/";
    return path.find(u"/./") != std::u16string::npos || path.find(u"/../") != std::u16string::npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string bytes(reinterpret_cast<const char*>(data + 1), size - 1);
    const std::u16string path = fnfuzz::toUtf16(bytes);
    if (data[0] % 3 == 0) {
        // Accepted input is whole sequences, so the repair leaves it as it is.
        const Utf8Check result = validateUTF8String(bytes);
        FNFUZZ_CHECK(!(result.repaired && isStrictUtf8(bytes)));
        FNFUZZ_CHECK(result.bytes == repair(bytes) && (result.repaired || result.bytes == bytes));
    } else if (data[0] % 3 == 1) {
        std::vector<std::u16string> segments = {u"left over"};
        FNFUZZ_CHECK(splitPathIntoSegments(path, segments) != path.empty());
        FNFUZZ_CHECK(segments == (path.empty() ? std::vector<std::u16string>{u"left over"}
                                               : referenceSplit(path)));
    } else {
        FNFUZZ_CHECK(containsDotSegments(path) == referenceDotSegments(path));
    }
    return 0;
}
