#include "siblings/TvlWin/KeyContext.h"

#include "windows/Keyboard.h"

namespace Framework::UI::Win32Detail {

namespace {
// Virtual-key codes.
constexpr int kShift = 0x10;     // VK_SHIFT
constexpr int kControl = 0x11;   // VK_CONTROL
constexpr int kAlt = 0x12;       // VK_MENU

class KeyContext final : public IKeyContext {
public:
    bool IsShiftDown() const override { return IsKeyDown(kShift); }
    bool IsControlDown() const override { return IsKeyDown(kControl); }
    bool IsAltDown() const override { return IsKeyDown(kAlt); }
    bool IsKeyDown(int virtualKey) const override { return Ports::Keyboard::Get().IsDown(virtualKey); }
};
}   // namespace

std::unique_ptr<IKeyContext> CreateKeyContext() { return std::make_unique<KeyContext>(); }

}   // namespace Framework::UI::Win32Detail
