#include "UnitTables.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <type_traits>

namespace {
template <class Definition>
WUntiDef* Make(const DefinitionRow& row)
{
    auto definition = std::make_unique<Definition>();
    // Pixels are defined at once, all others when they are first used.
    if constexpr (std::is_same_v<Definition, WUnitPixel>)
        definition->Define(row.decimals, row.increments[0], row.increments[1], row.increments[2], row.keys[0],
            row.keys[1], row.keys[2], row.keys[3], row.factor);
    return definition.release();
}

template <class Display>
WUnitCollection* MakeDisplay()
{
    return new Display;
}

// A single-precision 0.05, widened: documents hold steps that were made with it.
constexpr double kSingleTwentieth = 0.05000000074505806;

constexpr DefinitionRow kDefinitions[] = {
    {22, 3, {1.0, 2.0, 5.0}, Make<WUntiDef>, {L"", L"", L"", L""}, 1.0},
    {1, 5, {0.01, kSingleTwentieth, 0.1}, Make<WUnitWithSymbol>,
        {L"47eaa099-2cb6-416d-86dc-283cf0480ff9", L"1509bb0a-9bf1-4331-8a11-8783593942a4",
            L"f5ec52ed-0108-4475-92e1-bc7656670b14", L"59ba1b0d-5c90-4158-a909-406c2e416788"},
        0.0254},
    {16, 6, {0.1, 0.5, 1.0}, Make<WUntiDef>,
        {L"5d32fe61-985f-44e7-aa09-5ee82bb29976", L"9a1e40b4-5815-4a99-99e2-d15364c7a500",
            L"68b4aef7-3eaa-4e17-9d8a-4eace693ae2d", L""},
        0.9144},
    {8, 9, {0.1, 0.5, 1.0}, Make<WUntiDef>,
        {L"142c8364-7806-4577-93e7-83e7eb04b39b", L"3b041641-1788-44f2-a60d-f25453fe2e85",
            L"00a154d8-5ed8-4bcc-b5c7-19c2add9ca88", L""},
        1609.344},
    {2, 3, {0.1, 0.5, 1.0}, Make<WUntiDef>,
        {L"c0290103-855d-4f55-99ec-8712e8e3574f", L"6e704245-a4ff-41e3-a794-9b80dcb0b82e",
            L"de1b1471-320a-48ea-b7a7-88d106762832", L""},
        0.001},
    {5, 4, {0.1, 0.5, 1.0}, Make<WUntiDef>,
        {L"4350cc17-21e5-4f21-acd5-52a09ddbef12", L"9ed89edd-d684-4325-b600-e6129ec04ece",
            L"627bf322-5fac-4cb6-a34a-cb115ee347dd", L""},
        0.01},
    {9, 6, {0.1, 0.5, 1.0}, Make<WUntiDef>,
        {L"a930d55d-9545-40f3-ae88-9fe46f2c7a8c", L"43f2f193-6e85-4f08-b592-7b0fe339d309",
            L"990d3cd8-381d-422f-850c-86bd84e0164b", L""},
        1.0},
    {10, 9, {1.0, 2.0, 5.0}, Make<WUntiDef>,
        {L"e07cb579-3e7f-497b-bcc1-c0c8b0cdf20a", L"78f6d824-86ea-4214-b5c3-4e7e77ca4499",
            L"1dcd327f-761e-47cb-bb7e-8913655c1d15", L""},
        1000.0},
    {6, 0, {1.0, 2.0, 5.0}, Make<WUnitPixel>,
        {L"9672be1a-7fed-4bb9-a92f-a271dbc52933", L"c44a66f4-cf25-4346-9cbe-4f50bdbcda98",
            L"1e2ed6cb-6470-4f1f-934b-8db4b18fbdb1", L""},
        1000.0},
    {4, 3, {0.1, 0.5, 1.0}, Make<WUntiDef>,
        {L"4f859933-fdf0-445f-97e4-85b6761978dd", L"2e460a96-1894-4a23-9985-5162fd0b00ea",
            L"310a853e-ec9a-42f2-8ea9-877af376bc25", L""},
        0.00035277777777777776},
    {13, 3, {0.1, 0.5, 1.0}, Make<WUntiDef>,
        {L"64e752cc-93a9-48b6-81f7-2b0a43c20f56", L"bbb3a32a-cf00-477c-ba67-4d0a5fd11a32",
            L"79ded9f2-07d3-436c-905b-dd8f4ed3d99e", L""},
        0.00037592},
    {14, 3, {1.0, 2.0, 5.0}, Make<WUntiDef>,
        {L"8a9e1df7-e771-476e-ad78-3715ee6f7a8f", L"9e180bf5-c37e-41e2-a9fa-541c228a3129",
            L"20b81d7f-8e9e-4bb8-b4a3-7b2b926271f2", L""},
        0.0018142857142857142},
    {24, 0, {0.1, 0.5, 1.0}, Make<WUntiDef>,
        {L"aafaf84b-afd8-48d3-87f3-36da84c6a400", L"38bf8cc2-79b5-4a73-838e-4a118913c782",
            L"d38cf734-19a7-4ae4-bdf3-bae7d3f28783", L""},
        0.004233333333333333},
    {25, 3, {0.08333, 0.5, 1.0}, Make<WUntiDef>,
        {L"61796ac4-1055-4b62-9804-abbec2b8c1c5", L"95655d03-be61-4ea4-bf28-bbfa4dee94f9",
            L"e5600642-060d-4a21-a64b-88b0402db603", L""},
        0.00451187},
    {7, 6, {0.1, 0.5, 1.0}, Make<WUnitWithSymbol>,
        {L"3c0eea66-9918-4b1d-bee7-a16b0a6bf830", L"efdeed7f-9f6f-4756-a0cd-a0172bac7c60",
            L"fb474e95-e2f0-4826-ba91-53bde3221553", L"980f951c-e392-4fcd-b6d4-d9b1cac733f4"},
        0.3048},
    {11, 0, {1.0, 2.0, 5.0}, Make<WUnitWithSymbol>,
        {L"7acfa1b6-1d31-43ab-bd3f-3fbf902456cf", L"e85a57fc-9b39-44c1-be12-7b35baaa7b43",
            L"4e64eff0-ad52-43c3-8c41-1c6db644c0fe", L"bfbfc1d9-fe27-4f1a-9db8-8d09aca93b03"},
        0.017453292519943295},
    {26, 0, {1.0, 2.0, 5.0}, Make<WUnitWithSymbol>,
        {L"42eb80dc-a7c3-4599-8ff8-330c4d719ec7", L"c1a1dbfd-f049-4dc0-9392-e4527ea2fb2b",
            L"88aaeb7c-b314-4f25-8e68-33eb0bd47e27", L"33c6a5a5-b2b1-40da-8f65-92a5a30abf65"},
        0.0002908882086657216},
    {27, 0, {1.0, 2.0, 5.0}, Make<WUnitWithSymbol>,
        {L"372c4235-87a2-4abd-9c64-4f950d5e92c8", L"6379e369-3367-4dd4-890d-a4fc0b39b779",
            L"2a868409-3797-420b-ba32-2062ce9001ef", L"cb80142c-81e8-4a41-a64f-74fea5b5c578"},
        4.84813681109536e-06},
    {32, 5, {1.0, 2.0, 5.0}, Make<WUntiDef>,
        {L"4c02aa64-2a33-417d-afc5-2a098b36cd0c", L"2c75bf61-45d1-449a-8ba1-70c9e6c39385",
            L"14c7fc1c-85f5-447a-b258-c319f97bf1b8", L""},
        1.0},
    {35, 3, {0.08333, 0.5, 1.0}, Make<WUntiDef>,
        {L"d26d4b5a-c542-4767-83f7-fbb2c1465919", L"92c3bfee-8e9f-4526-b4ab-769e1d4756cb",
            L"f82b08ea-79e1-4c25-ad03-75b49fbc5e01", L""},
        0.00451187},
    {36, 0, {0.1, 0.5, 1.0}, Make<WUntiDef>,
        {L"e0776f79-4505-45f3-b345-ea49da86430a", L"72defbc6-89b4-4b2d-b586-b1ff50295142",
            L"305a34ba-d517-44d0-bbbd-ae4687b112e8", L""},
        0.004233333333333333},
    {37, 3, {0.1, 0.5, 1.0}, Make<WUntiDef>,
        {L"42569925-f61e-46e9-aa22-64acc8daa038", L"42569925-f61e-46e9-aa22-64acc8daa038",
            L"42569925-f61e-46e9-aa22-64acc8daa038", L""},
        0.00025},
    {38, 3, {0.1, 0.5, 1.0}, Make<WUntiDef>,
        {L"42569925-f61e-46e9-aa22-64acc8daa038", L"42569925-f61e-46e9-aa22-64acc8daa038",
            L"42569925-f61e-46e9-aa22-64acc8daa038", L""},
        0.00025},
    {39, 0, {1.0, 2.0, 5.0}, Make<WUnitWithSymbol>,
        {L"1afd72ae-e000-4d36-9a40-515e6c3b8027", L"1afd72ae-e000-4d36-9a40-515e6c3b8027",
            L"1afd72ae-e000-4d36-9a40-515e6c3b8027", L"1afd72ae-e000-4d36-9a40-515e6c3b8027"},
        1.0},
    {40, 0, {1.0, 2.0, 5.0}, Make<WUntiDef>,
        {L"2a868409-3797-420b-ba32-2062ce9001ef", L"2a868409-3797-420b-ba32-2062ce9001ef",
            L"2a868409-3797-420b-ba32-2062ce9001ef", L""},
        1.0},
};

constexpr DisplayRow kDisplays[] = {
    {22, MakeDisplay<WUnitCollection>, {22, 0, 0}, 1, 0, -1},
    {23, MakeDisplay<WUnitCollection>, {22, 0, 0}, 1, 0, -1},
    {0, MakeDisplay<WUnitCollection>, {22, 0, 0}, 1, 0, -1},
    {17, MakeDisplay<WUnitCollection>, {22, 0, 0}, 1, 0, 0},
    {15, MakeDisplay<WUnitCollection>, {1, 0, 0}, 1, 0, -1},
    {1, MakeDisplay<WUnitCollection>, {1, 0, 0}, 1, 0, -1},
    {33, MakeDisplay<WUnitRationalInch>, {1, 0, 0}, 1, 0, -1},
    {16, MakeDisplay<WUnitCollection>, {16, 0, 0}, 1, 0, -1},
    {8, MakeDisplay<WUnitCollection>, {8, 0, 0}, 1, 0, -1},
    {2, MakeDisplay<WUnitCollection>, {2, 0, 0}, 1, 0, -1},
    {5, MakeDisplay<WUnitCollection>, {5, 0, 0}, 1, 0, -1},
    {9, MakeDisplay<WUnitCollection>, {9, 0, 0}, 1, 0, -1},
    {10, MakeDisplay<WUnitCollection>, {10, 0, 0}, 1, 0, -1},
    {6, MakeDisplay<WUnitCollection>, {6, 0, 0}, 1, 0, -1},
    {4, MakeDisplay<WUnitCollection>, {4, 0, 0}, 1, 0, -1},
    {13, MakeDisplay<WUnitCollection>, {13, 0, 0}, 1, 0, -1},
    {14, MakeDisplay<WUnitCollection>, {14, 0, 0}, 1, 0, -1},
    {3, MakeDisplay<WUnitCollection>, {24, 4, 0}, 2, 1, -1},
    {12, MakeDisplay<WUnitCollection>, {25, 13, 0}, 2, 1, -1},
    {30, MakeDisplay<WUnitCollection>, {7, 0, 0}, 1, 0, -1},
    {7, MakeDisplay<WUnitCollection>, {7, 0, 0}, 1, 0, -1},
    {34, MakeDisplay<WUnitRationalInch>, {7, 0, 0}, 1, 0, -1},
    {24, MakeDisplay<WUnitCollection>, {24, 0, 0}, 1, 0, -1},
    {25, MakeDisplay<WUnitCollection>, {25, 0, 0}, 1, 0, -1},
    {11, MakeDisplay<WUnitCollection>, {11, 0, 0}, 1, 0, -1},
    {26, MakeDisplay<WUnitCollection>, {26, 0, 0}, 1, 0, -1},
    {27, MakeDisplay<WUnitCollection>, {27, 0, 0}, 1, 0, -1},
    {31, MakeDisplay<WUnitRationalBase2>, {7, 1, 0}, 2, 0, -1},
    {29, MakeDisplay<WUnitCollection>, {11, 26, 0}, 2, 0, 0},
    {28, MakeDisplay<WUnitCollection>, {11, 26, 27}, 3, 0, 2},
    {32, MakeDisplay<WUnitCollection>, {32, 0, 0}, 1, 0, -1},
    {35, MakeDisplay<WUnitCollection>, {35, 0, 0}, 1, 0, -1},
    {36, MakeDisplay<WUnitCollection>, {36, 0, 0}, 1, 0, -1},
    {37, MakeDisplay<WUnitCollection>, {37, 0, 0}, 1, 0, -1},
    {38, MakeDisplay<WUnitCollection>, {38, 0, 0}, 1, 0, -1},
    {39, MakeDisplay<WUnitCollection>, {39, 0, 0}, 1, 0, -1},
    {40, MakeDisplay<WUnitCollection>, {40, 0, 0}, 1, 0, -1},
};

constexpr int kDefaultDisplays[] = {22, 23, 0, 17, 1, 15, 7, 30, 31, 16, 8, 32, 11, 26, 27, 29, 28, 2, 5, 9, 10, 14, 6,
    24, 4, 3, 25, 13, 12, 33, 34, 35, 36, 37, 38, 39, 40, -1};

template <class Row, std::size_t count>
const Row* Find(const Row (&rows)[count], int id)
{
    const auto* const found =
        std::find_if(std::begin(rows), std::end(rows), [id](const Row& row) { return row.id == id; });
    return found == std::end(rows) ? nullptr : found;
}
}   // namespace

const DefinitionRow* FindDefinitionRow(int id) { return Find(kDefinitions, id); }
const DisplayRow* FindDisplayRow(int id) { return Find(kDisplays, id); }
std::span<const int> DefaultDisplays() { return kDefaultDisplays; }
