// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/TabView.h"
#include "src/app/MainWindow.h"
#include "src/app/QelApp.h"
#include "src/chart/ChartView.h"
#include "src/chart/ChartViewHolder.h"

/// Parts of the application's main window.

inline BTabView* Tabs(QelApp& app)
{
    for (int32 i = 0; i < app.Window()->CountChildren(); i++)
        if (auto* tabs = dynamic_cast<BTabView*>(app.Window()->ChildAt(i)))
            return tabs;
    return nullptr;
}

inline ChartViewHolder& Charts(QelApp& app)
{
    return dynamic_cast<ChartViewHolder&>(*Tabs(app)->TabAt(1)->View());
}

inline ChartView* FirstChart(QelApp& app)
{
    return Charts(app).ChartAt(0);
}
