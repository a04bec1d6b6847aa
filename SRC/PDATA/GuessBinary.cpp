// Binary files: the length must be that of the head and of as many records as the head says.
#include <cmath>
#include <cstring>

#include <wx/intl.h>

#include "PDATA/GuessParts.h"
#include "PDATA/clsGrammerBase.h"

namespace {

struct Layout_st {
    std::vector<int> mHead, mBody;
    wxString mStrName;
};

template <class T>
T Read(const std::string& bytes, size_t pos) {
    T value;
    std::memcpy(&value, &bytes[pos], sizeof value);
    return value;
}

size_t HeadBytes(const std::vector<int>& head) {
    size_t sum = 0;
    for (const int code : head)
        sum += static_cast<size_t>(GrammerBase_cls::GetHeadItemByte(code));
    return sum;
}

size_t RecordBytes(const std::vector<int>& body) {
    size_t sum = 0;
    for (const int code : body)
        sum += static_cast<size_t>(GrammerBase_cls::GetBodyItemByte(code));
    return sum;
}

// The particle count by a head; -1 when it has none or the file is too short.
long long Count(const FileStart_st& start, const std::vector<int>& head) {
    size_t pos = 0;
    long long count = -1;
    for (const int code : head) {
        const size_t size = static_cast<size_t>(GrammerBase_cls::GetHeadItemByte(code));
        if (start.mBytes.size() < pos + size) return -1;
        if (code == HEAD_NUMBER) count = Read<int>(start.mBytes, pos);
        pos += size;
    }
    return count;
}

bool Fits(const FileStart_st& start, const Layout_st& layout) {
    const long long count = Count(start, layout.mHead);
    const long long record = static_cast<long long>(RecordBytes(layout.mBody));
    return count > 0 && record > 0 &&
           start.mSize == static_cast<long long>(HeadBytes(layout.mHead)) + count * record;
}

// Is this what the simulation would write there? Whole numbers read as floats are tiny.
bool IsPlausible(const wxString& name, const std::string& bytes, size_t pos) {
    const int integer = Read<int>(bytes, pos);
    if (name == "Type") return integer >= -1 && integer <= 255;
    if (name == "ID") return integer >= -1 && integer < 1 << 30;
    const float real = std::abs(Read<float>(bytes, pos));
    return name == "Dummy" || real == 0.0f || (real > 1e-30f && real < 1e30f);
}

// Implausible numbers among the first records.
size_t CountImplausible(const FileStart_st& start, const Layout_st& layout) {
    const std::vector<wxString> names = NumberNames(layout.mBody);
    size_t sum = 0, pos = HeadBytes(layout.mHead);
    for (int i = 0; i < 200 && pos + 4 * names.size() <= start.mBytes.size(); ++i)
        for (const wxString& name : names) {
            sum += IsPlausible(name, start.mBytes, pos) ? 0 : 1;
            pos += 4;
        }
    return sum;
}

void AddRecords(const FileStart_st& start, GrammarGuess_st* pGuess) {
    size_t pos = HeadBytes(pGuess->mHead);
    const size_t record = RecordBytes(pGuess->mBody);
    const std::vector<wxString> names = NumberNames(pGuess->mBody);
    for (int i = 0; i < 3 && pos + record <= start.mBytes.size(); ++i) {
        std::vector<wxString> cells;
        for (const wxString& name : names) {
            const bool bInt = name == "ID" || name == "Type";
            const double real = static_cast<double>(Read<float>(start.mBytes, pos));
            cells.push_back(
                name + "=" +
                (bInt ? wxString::Format("%d", Read<int>(start.mBytes, pos)) : wxString::FromCDouble(real)));
            pos += 4;
        }
        pGuess->mRecords.push_back(cells);
    }
}

} // namespace

GrammarGuess_st GuessBinary(const FileStart_st& start, const GrammerBase_cls& present) {
    const std::vector<int> head = present.GetHeaderGrammer(), body = present.GetBodyGrammer();
    const std::vector<int> defaultHead = GrammerBase_cls::DefaultHead();
    const std::vector<int> defaultBody = GrammerBase_cls::DefaultBody();
    const Layout_st layouts[] = {
        {head, body, _("the present format")},
        {defaultHead, defaultBody, _("the default format")},
        {defaultHead, body, _("time, count and the present record")},
        {{HEAD_NUMBER, HEAD_TIME}, body, _("count, time and the present record")},
        {{HEAD_NUMBER}, body, _("the count and the present record")},
        {head, defaultBody, _("the present header and the default record")},
        {{HEAD_NUMBER, HEAD_TIME}, defaultBody, _("count, time and the default record")},
        {{HEAD_NUMBER}, defaultBody, _("the count and the default record")},
    };
    GrammarGuess_st guess;
    const Layout_st* best = nullptr;
    size_t least = 0;
    for (const Layout_st& layout : layouts) {
        if (!Fits(start, layout)) continue;
        const size_t implausible = CountImplausible(start, layout);
        if (best && implausible >= least) continue;
        best = &layout;
        least = implausible;
    }
    if (best) {
        guess.mHead = best->mHead;
        guess.mBody = best->mBody;
        guess.mReasons.push_back(_("The file holds bytes that are no text."));
        guess.mReasons.push_back(wxString::Format(
            _("Its %lld bytes are just those of %s: %zu bytes of header and %lld records of %zu bytes."),
            start.mSize, best->mStrName, HeadBytes(best->mHead), Count(start, best->mHead),
            RecordBytes(best->mBody)));
        AddRecords(start, &guess);
        return guess;
    }
    const long long count = Count(start, head);
    guess.mStrProblem = wxString::Format(_("The file is binary, but no known layout gives its %lld bytes. By "
                                           "the present header it has %lld particles, "
                                           "and a record of the present format has %zu bytes."),
                                         start.mSize, count, RecordBytes(body));
    return guess;
}
