// Names of tags.
#include "CExif.h"
#include "siblings/TvlResources/Resources.h"

namespace {
struct LabelRow {
    unsigned short id;
    const wchar_t* key;
};

// In the order in which applications know it, which is not ascending behind 37522.
constexpr LabelRow kLabels[] = {
    {0, L"04d5201d-e634-46de-a20e-1c296b9c5f0f"},       // GPS version
    {2, L"61a02dd6-a4ab-4b81-a5ce-bf3bdedfbe3e"},       // GPS latitude
    {4, L"05b8371d-896a-4294-be70-c1dfd7f7210b"},       // GPS longitude
    {6, L"0db92f44-93c3-4cbc-bfb3-cc91e58af235"},       // GPS altitude
    {7, L"6ff68983-dad9-457e-a90e-e0769e2f4fe7"},       // GPS time
    {8, L"933001ff-5e37-4d9e-986e-bf98b44cd524"},       // GPS satellites
    {9, L"c71d50a4-d5d1-4eab-8654-79fe62c5a95d"},       // GPS receiver status
    {10, L"247fb780-e33c-4bcc-8e33-530de456050f"},      // GPS measurement mode
    {11, L"4cebae2f-16f1-44d7-bbf3-cb7012170e0c"},      // GPS dilution of precision
    {13, L"5546b551-a518-4b8d-8ff2-8b47dde25c83"},      // GPS speed
    {15, L"19216419-50af-4f95-a7b3-01d9e357369b"},      // GPS direction of movement
    {17, L"b09cffa1-c8f0-4bf3-a320-54d10bf95930"},      // GPS image direction
    {18, L"60c6aeb4-852a-4668-9f18-dbf71f6cde8a"},      // GPS map datum
    {20, L"38637d63-56cc-44d7-9616-3b151bb32552"},      // GPS destination latitude
    {22, L"b1575975-c9bc-49f2-98fa-93cddaf3d4e2"},      // GPS destination longitude
    {24, L"bf2581e2-a23e-4b3c-88c1-de2718e7d43c"},      // GPS destination bearing
    {26, L"b6794481-c816-41a3-bd86-b993327dd256"},      // GPS destination distance
    {270, L"2dfdf42e-35bb-4d4b-8a26-743340db54f7"},     // Image description
    {271, L"bc0152da-a0b3-47b5-ae37-a1c3c40a3676"},     // Camera maker
    {272, L"ccb18ed3-e3e0-44e7-9531-2dd810275772"},     // Camera model
    {282, L"b0cfd5ed-bf4f-46a5-8d6d-6b3833dfbb16"},     // Horizontal resolution
    {283, L"fb20c2b5-dfb0-4485-aefc-2cb04911d9b2"},     // Vertical resolution
    {305, L"b07191ba-6a2c-489b-a146-a6719a99e813"},     // Software
    {306, L"5afade8f-1861-45c8-be9c-9b507710d4a6"},     // Date changed
    {315, L"186833dd-4a58-493d-843b-da15ed786116"},     // Artist
    {33432, L"d91239a7-216c-4247-8d13-1a102e7b35d4"},   // Copyright
    {33434, L"73055227-7328-4951-8cc1-fd5683179518"},   // Exposure time
    {33437, L"62d7ecc5-2333-4d9b-ad93-fabd6b76564b"},   // F-number
    {34850, L"04812848-9ad4-4192-a086-66215d2feba2"},   // Exposure program
    {34852, L"f7a93ee1-59f7-4b3d-967d-4a20af4c60b9"},   // Spectral sensitivity
    {34855, L"3bd60203-695e-4997-9c53-9cf1ac18fcee"},   // ISO speed
    {34856, L"0745605e-5b0d-42a9-ba50-274e4cf9d36a"},   // Opto-electric conversion function
    {36864, L"3d35c856-a090-4c9d-90c2-9a7c35c5ad79"},   // Exif version
    {36867, L"dda7cec3-fcfd-4992-8057-8a311dd3ecb2"},   // Date taken
    {36868, L"fc08c23e-0ce0-45eb-b815-f97ffc7205d9"},   // Date digitized
    {37121, L"6ecb5f2b-d4b0-4391-ba22-ba0f16ad3955"},   // Components configuration
    {37122, L"eaff4aca-1795-4eb1-b291-4377ac620910"},   // Compressed bits per pixel
    {37500, L"244ebe1a-1862-48b0-9051-30c202d954fe"},   // Maker note
    {37510, L"11b41f6a-7c59-4382-9c99-c0062aa1d303"},   // User comment
    {37520, L"35f669fd-9a8d-4c63-bf8e-67e501cea843"},   // Date changed, fraction of a second
    {37521, L"1082ecef-2a57-48f9-96b7-2f9439b6e620"},   // Date taken, fraction of a second
    {37522, L"98a852c5-b2c2-426e-8060-851ea130e69b"},   // Date digitized, fraction of a second
    {37377, L"274ecffb-0340-4845-804a-08904bb6abcf"},   // Shutter speed
    {37378, L"6b1fcf99-b4bf-4960-b38e-3bf4cfbca04f"},   // Aperture
    {37379, L"e92a4fdd-7762-43a2-b432-79853f75cd5f"},   // Brightness
    {37380, L"ab7c3a91-20b8-45c1-9239-d43c268a76e0"},   // Exposure bias
    {37381, L"61aa89da-06bd-4aaf-854c-9b6984c8ec71"},   // Largest aperture
    {37382, L"48e5070c-a417-43b8-b579-dd6e880664b6"},   // Subject distance
    {37383, L"993ddb4b-dd4b-48b4-a75f-d2d6c755407b"},   // Metering mode
    {37384, L"20ff9642-1c48-4313-898d-b2e85e299a47"},   // Light source
    {37385, L"de91db4f-9b1a-4e11-a821-5c17772c761c"},   // Flash
    {37386, L"4da1e368-c8c0-4958-af90-f7fcac76d9da"},   // Focal length
    {40960, L"4170bb61-63be-4c82-83e7-274227887036"},   // FlashPix version
    {40961, L"c431ab27-fd66-42ff-990f-c6a60acc61ae"},   // Color space
    {40962, L"eabbcb6a-c1de-49cc-b812-f4aed656d0a0"},   // Image width
    {40963, L"04cdb26a-072b-4df5-908b-0b8f8aeac017"},   // Image height
    {41483, L"8e5915a2-46a6-4a09-953d-b06f53ea2a3f"},   // Flash energy
    {41484, L"feb1194f-961a-4647-a1c1-af73021e72cb"},   // Spatial frequency response
    {41486, L"3687b77e-98c6-4465-910e-a70e80df13e3"},   // Focal plane horizontal resolution
    {41487, L"51c9b635-4bbd-46e7-b489-fd4777d28f91"},   // Focal plane vertical resolution
    {41488, L"97850a73-5b51-40f3-bf02-3c5f74bf751b"},   // Focal plane resolution unit
    {41492, L"7907eb96-2ebe-468c-b13e-7bbfe385c206"},   // Subject location
    {41493, L"578f5446-9752-4576-b88a-3b3d5e875c73"},   // Exposure index
    {41495, L"9df917a3-c1fc-4006-9b2f-88e7425913c0"},   // Sensing method
    {41728, L"ee757a69-30fd-4cab-a66f-e968aaf4416b"},   // File source
    {41729, L"7b16992b-0f25-43f4-a6ac-22eb741d304f"},   // Scene type
    {41730, L"612dc0d5-7187-4cf4-b92f-c11d1c668af0"},   // Color filter array pattern
};
static_assert(std::size(kLabels) == 67);
}   // namespace

int CExifTag::GetDisplayLabel(TvlStringT<wchar_t>& label)
{
    // Ends at the first row above the tag, so that the rows 37377 to 37386 are never found: applications show no label
    // for those tags.
    for (const LabelRow& row : kLabels) {
        if (row.id > id)
            return 0;
        if (row.id == id) {
            label = Framework::Resources::GetString(row.key);
            return 1;
        }
    }
    return 0;
}
