// Operations on lists, driven by bytes: the first chooses the family and the caller's header, the rest is the sequence.
// Lists must answer as their plain models and stay valid.
#include "FakeWindowing.h"
#include "ListOperations.h"
#include "SlotOperations.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

using namespace ListTrials;

constexpr LONG kLongest = 200;

/// Choices until the bytes end, then zeroes.
class Bytes : public Choices {
public:
    Bytes(const std::uint8_t* data, std::size_t size) : m_next(data), m_end(data + size) { }
    bool Ended() const { return m_next == m_end; }
    unsigned Below(unsigned bound) override { return Ended() ? 0 : *m_next++ % bound; }

private:
    const std::uint8_t* m_next;
    const std::uint8_t* m_end;
};

void Expect(const std::string& difference)
{
    if (difference.empty())
        return;
    std::fputs(difference.c_str(), stderr);
    std::abort();
}

void RunBlockList(Bytes& bytes, ULONG header)
{
    HMEM__* const handle = LIST_CtorExt(header);
    ListModel model(header);
    while (!bytes.Ended() && model.Count() < kLongest)
        Expect(Step(handle, model, Choose(bytes, std::size(kListRows), model.Count())));
    HMEM__* const copy = LIST_DupCtor(handle);
    LIST_Dtor(handle);
    Expect(Difference(copy, model));
    LIST_Dtor(copy);
}

void RunSlotList(Bytes& bytes)
{
    OpenList list;
    SlotModel model;
    while (!bytes.Ended() && model.Count() < kLongest)
        Expect(Step(list, model, Choose(bytes, std::size(kSlotRows), model.Count())));
}

}   // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FakeWindowing windowing;
    Bytes bytes(data, size);
    const unsigned choice = bytes.Below(256);
    if (choice % 2 == 0)
        RunBlockList(bytes, 12 + choice / 2 % 16);
    else
        RunSlotList(bytes);
    return 0;
}
