#include "siblings/Tvl2D/SkiaUtility.h"

#include <atomic>

namespace SkiaUtility {

namespace {
std::atomic<TextRendering> current = TextRendering::Standard;
}

void SetChineseTextRendering() { current = TextRendering::Chinese; }
void SetFarEastTextRendering() { current = TextRendering::FarEast; }
TextRendering GetTextRendering() { return current; }
void ResetTextRendering() { current = TextRendering::Standard; }

}   // namespace SkiaUtility
