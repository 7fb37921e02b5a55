#include "PaperKeys.h"

#include "siblings/TvlResources/Resources.h"

#include <algorithm>
#include <iterator>
#include <mutex>
#include <optional>

namespace {
// Keys of the names in the texts of the suite, by paper. What each paper is stands in docs/papers.md.
constexpr const wchar_t* kKeys[] = {
    L"edc82e6a-8df8-47c4-9166-e08ffeb54645",
    L"1a4fa7e0-0b17-45a5-a45d-3a9c1c16fe67",
    L"fe1b1434-3b10-4980-950c-aef9618a9261",
    L"62b8a158-e9f0-4cf8-a6e9-d6a12a8161e5",
    L"4890afe0-b0ac-48b8-a57b-47b993f3cfc7",
    L"da1a4658-622f-419b-86db-76078d954e50",
    L"02635545-9390-487c-8364-92adbb4bb95c",
    L"ff72b36b-a95d-4ec7-bfc3-1a98c7fd59a0",
    L"f2e4d9af-707c-4899-84b1-84cfd6dc3c3b",
    L"fadf6031-265b-4716-bc96-170a27b1519d",
    L"41ec6150-2ae1-4c88-91a2-64abb921a5c0",
    L"9573164a-9eeb-4203-b0f2-b5d2a7977bac",
    L"96772783-c8c8-4276-9eac-708b0f3b5607",
    L"48266838-ddec-4d4f-aebe-b44008731892",
    L"129d9ca5-3743-49d5-bc1d-d3d8d74ec826",
    L"79a5c140-bb7a-4441-9c36-7095b9eabb84",
    L"04bee4f7-ab81-4e96-8e24-341020003f96",
    L"24c23874-e9c8-4380-9943-aaf51faf3b70",
    L"2d808c68-fae1-4a66-a69c-9cfdb058928d",
    L"39ae678d-515b-4b07-843d-65ec0db41c81",
    L"93e9f59b-9bb3-4f0a-86ac-eac69eb1c2e0",
    L"cbeeac87-e345-423a-af55-67212e9d7aaf",
    L"664288d8-4d29-4e5e-8eb1-2942d8b60441",
    L"17f0e77d-aaeb-4686-9b51-7272255a3355",
    L"a80f5fba-a9d0-42a3-8581-2369683dada3",
    L"3afbb5fc-6513-4757-9c08-3c637e4695d1",
    L"13ef16dd-228c-492f-95fc-0d51058bd2bb",
    L"66df288e-ba6c-4e33-b21b-8ca8755ad4f6",
    L"479d6f39-be93-4a2a-8845-7b9c6cf85782",
    L"03a5c5a7-e15e-4917-8731-14388a2f7f42",
    L"2d23ed49-5266-4ac7-b6b8-3ed8a7b5dbec",
    L"b7591f28-10d3-4f43-8ea1-55d123892f62",
    L"ae9b3dee-dccb-4d13-b862-6f980a22fbf9",
    L"d6bad644-c059-4089-9a09-9928dfe5395b",
    L"b485782c-a916-42b0-bc8d-c44f1bfd008a",
    L"69cb455d-e399-4deb-a513-324d20ae04b9",
    L"15d748aa-bfe6-41fc-b5b9-6adea7cad5cd",
    L"99e9eafe-6b1b-428a-876a-2d839beb204c",
    L"f1fe34e4-f630-4319-9977-5ab3d930f04c",
    L"5cfa76c5-6ff8-449f-b879-dba43de38e8c",
    L"b8d74119-ae11-4fd0-b5ab-b1c3bbc17f89",
    L"153f00a9-7334-4e0d-89f6-f009691dec50",
    L"8ac8fd3b-46a4-4223-ab25-4c20f7b6a0dc",
    L"3fb43212-afa6-43be-add6-cd0c3626fd2b",
    L"b43c6868-e5bf-41f2-a093-41e646e6f2bc",
    L"9f685032-ecb4-4538-8ed3-715c5363a2d0",
    L"4b7437e4-e297-4d60-89a3-82b2613b664d",
    L"14a06dd8-bb65-48c4-b0e8-0f09c0499c6e",
    L"36be4a29-2a0c-4693-8d5b-078036dd706d",
    L"780248a3-2e3d-49e5-b9bd-6c0c07f13275",
    L"fcdeac7e-107a-48f7-bda4-5f50aaa347c8",
    L"9f691e31-9129-4fdb-8c32-73fd3cb9abb3",
    L"1f390b7c-543d-40f9-be27-49dd27b7e78b",
    L"b8ba857b-ad14-4abf-a25b-4f683a76b278",
    L"727e269b-ff5d-4487-9295-f3981e571249",
    L"316af664-b68a-4f94-bd66-f8389946d722",
    L"648b506e-7f71-491f-8609-aaf38d743109",
    L"455f8ade-e4ca-4753-9b49-60cff87ee76c",
    L"2db78b5f-07a3-48e4-9a93-0220d26affa0",
    L"277ce18d-f113-450f-b55f-931296ea632b",
    L"84ac06d1-8353-472e-a72f-17afa3680813",
    L"694742f4-2d50-411f-ab77-a646a652cada",
    L"f6254801-c8a0-4b3f-b901-46c6ba4a4bcd",
    L"aa9f7340-8281-42ae-8abb-f3f3125c34cc",
    L"36d04d19-5a1d-4c89-b197-88b898610b63",
    L"ee9ce484-ec03-4c5f-a638-0fd3ae83b889",
    L"48b0891f-4ec9-44e9-b48b-6bdde7fc83d2",
    L"6134d256-da9b-4a34-824c-e0d226d98b37",
    L"1f7fff77-d45b-4dfb-bb08-cd119ca9c914",
    L"9f283bbf-4789-4f0d-b4e4-9e2ede71f58c",
    L"67362deb-4da0-428d-aaa7-8b5c965f23de",
    L"d9d3be82-b10a-42c3-bdd2-7234cc286f11",
    L"78496626-8008-48c2-98fb-06e33d32382f",
    L"7bdad4c0-3ba8-41ba-b0f3-61d79819ef02",
    L"4a9b1f24-7967-4d16-a74f-0fee2eb7c4bd",
    L"78b94d18-7ec2-476e-bf3d-66dd1274955c",
    L"600acfe8-d373-47d6-91b9-cf2bf0a28824",
    L"ffb3e83b-d364-49e3-9c4b-563a0de7be86",
    L"88fc6626-b54b-4414-9128-9b36b7698757",
    L"a1644007-c288-49c4-81d7-fb3606dc7b09",
    L"7fa2068d-cd94-4093-a99c-839d3207ed35",
    L"946957b6-5ddc-4c4c-ab1c-2c03528c039b",
    L"042f352c-de1a-4eac-ad7d-b2292c193070",
    L"9d915b1e-df70-4861-aa6c-5c3038c8f228",
    L"06ccf5b2-2603-4f59-a68c-328383890615",
    L"60044a31-87e5-4eb5-9713-82cea7b828f5",
    L"d959cf49-d2d6-467a-bbc1-96e706ebdc48",
    L"8e93a029-061c-4cfe-9f3f-fdf8455af7e2",
    L"3f0afd27-ba20-40f9-8689-aff9c4304ec5",
    L"0b55b8d3-2fab-42d9-b9ca-9d5a62c238cc",
    L"82a2b06d-9620-4a21-93cc-9dc886e5943d",
    L"1057f1ce-7d54-4618-af2a-4a3db0821e87",
    L"0a4152ec-b885-4190-89b7-f032915debc5",
    L"46ceff51-2e3a-4fc4-9e94-3aff308ec254",
    L"a8a19647-c10e-4f69-965b-1d787c0553e6",
    L"db35b6b3-da74-4a41-af76-2d11cd845d42",
    L"4f75e40e-b6b4-4d0c-844b-1287705e9af3",
    L"ce545479-6381-4959-8df0-019a1b2c8ae0",
    L"e4714e4d-d5d5-4059-8b66-3fb2111975b9",
    L"70493046-ab6f-40b3-919b-a5c0fff117f1",
    L"83137228-5f4a-44cd-b7c0-afaac0a0d556",
    L"12630263-15c3-495c-add8-6ceecb7f40e4",
    L"290f4d7e-59cf-43ed-a39f-28c85ee11093",
    L"43a6b6b4-2c48-48cf-b50f-5bdadd2abd89",
    L"10b4d067-16e2-4c24-aa1c-5b9b28bd1bdb",
    L"4ee0a9e9-50be-482c-83b3-e59bd7c57e02",
    L"52c6776a-5020-4e98-ac6d-efb7e730adaf",
    L"0d735fe7-31e7-4767-8404-a40ad63298ba",
    L"d2fadc93-f941-4cc2-ac7f-6326e709ce8c",
    L"1e4d9514-b11e-4c7a-945f-28a1e0dd6832",
    L"2634511d-ea11-4928-8404-12efe5779353",
    L"86b0a47c-4681-4037-b850-bc8df6bbb147",
    L"46141cf6-c798-4564-af33-107dd992369c",
    L"c0bcd123-2b0e-4f36-baae-e04a588ae9ae",
    L"c57c8dc9-78ed-4afe-9f71-77c5e64eeeed",
    L"677640ad-e2f5-433f-85ab-ee9a87b50493",
    L"ab5a2d85-40a3-4276-a897-aeac7bdd376d",
    L"b391da20-8846-44f9-9df2-a886af9b7e9f",
    L"294d76ac-b129-4e2a-9295-7c5a45bbd4d9",
    L"cda17d22-3ef6-416e-b01e-0ae4e76e9569",
    L"469f981f-c0f0-49ee-8687-df3dd010138c",
    L"d4f331d4-317a-4ad9-8d92-01db85c00c97",
    L"48981204-480a-498b-924b-bf12aa38930f",
    L"4ad191d5-da79-4819-ad20-c5d44032fb0d",
    L"113ffafb-17ac-464a-8930-f8474545c66f",
    L"929d0e3b-feaf-40c3-83aa-efffd871c437",
    L"e055937d-67ac-425a-a7f7-34314e2c7a39",
    L"b80526cc-c0b9-47b6-8c1a-fac48b660a81",
    L"f38be35c-a5e0-4df2-9fae-88b903205018",
    L"c9c2f873-edd7-4846-9fa6-9b543bd14b1a",
    L"aa1dcb4e-f1ba-4754-9997-11d26a265266",
    L"389f9dc9-a7b1-4f46-ab7f-1f70733d3e3a",
    L"0fb526f8-33e3-4f5a-93ab-852609b2b13f",
    L"056efe81-5e8b-47fe-9c6d-9f684bd67de1",
    L"b0a8c1ed-6bcb-437c-bebf-ea762c4e7905",
    L"8fae0fee-90f7-42b8-8289-a80a168ef7c7",
    L"cca98c8f-db70-4c2d-b8e4-151cf6831186",
    L"d872cfd5-fb53-43a1-8c3b-0bd29f380bd3",
    L"679ab58a-a25c-4512-9ea3-c2bcba80650d",
    L"8cd4535a-1514-4f0f-a836-aa227512778f",
    L"dfc94a22-e56d-4081-bb56-292be4a90a6c",
    L"177bb433-b05f-4eb8-a11f-d9d5ce09ceb5",
    L"b255cf4f-f565-4099-820b-95ffd00c3307",
    L"f84fe908-c510-41e6-95e8-29b9f8d288bb",
    L"aea0f945-f284-4af5-963d-dc6d042a6662",
    L"f82a4401-73be-44c6-863a-7a2691566f6e",
    L"e53b0954-453a-40df-a353-3e826e554660",
    L"ca903108-9e4b-4165-a72e-56b408b7c8f8",
    L"ed148bed-161f-4e2a-a4c7-56329e165d00",
};
static_assert(std::size(kKeys) == kPaperTypeCount);

/// The names in one language, kept because the store asks for all of them whenever it is read.
struct Names {
    std::mutex lock;
    unsigned generation = 0;
    std::optional<TvlString> texts[kPaperTypeCount];
};

Names& TheNames()
{
    static Names names;
    return names;
}
}   // namespace

TvlString PaperName(PaperType type)
{
    if (static_cast<unsigned>(type) >= kPaperTypeCount)
        return {};
    Names& names = TheNames();
    const std::lock_guard hold(names.lock);
    if (const unsigned generation = Framework::Resources::Generation(); generation != names.generation) {
        std::fill(std::begin(names.texts), std::end(names.texts), std::nullopt);
        names.generation = generation;
    }
    std::optional<TvlString>& text = names.texts[type];
    if (!text)
        text = Framework::Resources::GetString(kKeys[type]);
    return *text;
}
