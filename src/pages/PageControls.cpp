#include "src/pages/PageControls.h"

#include "kits/application/Looper.h"
#include "kits/interface/View.h"

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

std::string PercentLabel(const char* name, float position)
{
    return name + std::string(" ") + std::to_string(static_cast<int>(position * 100)) + " %";
}
