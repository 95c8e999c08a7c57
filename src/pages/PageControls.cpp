#include "src/pages/PageControls.h"

#include "kits/application/Looper.h"
#include "kits/interface/View.h"

#include <charconv>

void PostToPage(BHandler* page, uint32 code)
{
    if (BLooper* looper = page->Looper())
        looper->PostMessage(code, page);
}

BPoint PreferredSizeOf(BView* control)
{
    BPoint size;
    control->GetPreferredSize(&size.x, &size.y);
    return size;
}

std::string FixedPoint(double number, int decimals)
{
    char text[64];
    const auto result = std::to_chars(text, text + sizeof(text), number, std::chars_format::fixed, decimals);
    return {text, result.ptr};
}

std::string PercentLabel(const char* name, float position)
{
    return name + std::string(" ") + std::to_string(static_cast<int>(position * 100)) + " %";
}
