// Both kinds of lists: one whose elements share a block, and one whose elements stay where they are.
#include "ListMan.h"
#include "WGList.h"

#include <iostream>

int main()
{
    // LIST_: one block of handle memory. A free slot keeps its index.
    HMEM__* const numbers = LIST_Ctor();
    for (const int number : {10, 20, 30})
        LIST_Push(numbers, &number, sizeof number);
    LIST_DeleteIth(numbers, 1, nullptr, 0);
    std::cout << LIST_Size(numbers) << " slots, the second is " << (LIST_ExistIth(numbers, 1) ? "taken" : "free")
              << '\n';
    const int other = 40;
    std::cout << "40 goes to index " << LIST_InsertAtFree(numbers, &other, sizeof other) << '\n';
    LIST_Enum(
        numbers,
        [](void* element, ULONG, LONG index, long long) -> LONG {
            std::cout << index << ": " << *static_cast<int*>(element) << '\n';
            return 1;
        },
        0);
    std::cout << "the block has " << MEMMANGetSize(numbers) << " bytes\n";
    LIST_Dtor(numbers);

    // WGList: each element has a block of its own, and its pointer stays while others come and go.
    WGList names;
    names.InsertEnd("second", 7);
    const void* const second = names.Get(0);
    names.InsertStart("first", 6);
    std::cout << static_cast<const char*>(names.Get(0)) << ", " << static_cast<const char*>(names.Get(1)) << '\n';
    std::cout << "the second element has " << (names.Get(1) == second ? "not moved" : "moved") << '\n';
}
