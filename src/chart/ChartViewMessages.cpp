#include "src/chart/ChartView.h"
#include "src/support/MessageCodes.h"

void ChartView::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case MSG_SYSINFO_SAMPLE:
        TakeSample(*message);
        break;
    default:
        BView::MessageReceived(message);
    }
}
