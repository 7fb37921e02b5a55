// Lists of the engine to look into, and the boxes that it shows.
#pragma once

#include "FakeWindowing.h"
#include "ListMan.h"

#include <cstring>
#include <cwchar>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

class ListMan : public testing::Test {
protected:
    struct Free {
        void operator()(HMEM__* list) const { LIST_Dtor(list); }
    };
    using Owned = std::unique_ptr<HMEM__, Free>;

    static Owned ListOf(const std::vector<std::string>& elements)
    {
        Owned list(LIST_Ctor());
        for (const std::string& element : elements)
            LIST_Push(list.get(), element.data(), static_cast<ULONG>(element.size()));
        return list;
    }

    static LIST* Locked(const Owned& list) { return static_cast<LIST*>(MEMMANLock(list.get())); }

    /// Total size and offset table.
    static std::vector<ULONG> Layout(const Owned& list)
    {
        const LIST* const head = Locked(list);
        std::vector<ULONG> layout(head->count + 2);
        layout[0] = head->totalSize;
        std::memcpy(&layout[1], reinterpret_cast<const BYTE*>(head) + head->tableOffset, 4 * (head->count + 1));
        return layout;
    }

    static std::vector<std::string> Elements(const Owned& list)
    {
        std::vector<std::string> elements;
        for (LONG i = 0; i < LIST_Size(list.get()); ++i) {
            unsigned size = 0;
            const auto* const bytes = static_cast<const char*>(LIST_LGetIth(Locked(list), i, &size));
            elements.emplace_back(bytes, size);
        }
        return elements;
    }

    /// "code line" of every box since the last call, with an exclamation mark for the fatal text.
    std::vector<std::string> Reports()
    {
        std::vector<std::string> reports;
        for (const auto& box : windowing.boxes) {
            int code = 0;
            int line = 0;
            EXPECT_EQ(std::swscanf(box.caption.c_str(), L"Tovel: error %d in , line %d", &code, &line), 2);
            reports.push_back(std::to_string(code) + ' ' + std::to_string(line));
            if (code == 1002)
                fatalText = box.text;
            EXPECT_EQ(box.text == fatalText, code == 1002);
        }
        windowing.boxes.clear();
        return reports;
    }

    FakeWindowing windowing;
    std::wstring fatalText;
};
