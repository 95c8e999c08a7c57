// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/WidgetView.h"

#include <memory>
#include <string>
#include <vector>

class BTabView;

namespace kits {
class TabStrip;
}

/// One tab of a tab view: a label on the strip, and the view that is shown while the tab is selected.
///
/// A tab belongs to at most one tab view, which deletes it. It owns its view, even while the view is shown. While its
/// tab is not selected, the view is in no window.
class BTab {
public:
    /// @param view  owned from here; may be null and come with BTabView::AddTab
    explicit BTab(BView* view = nullptr);
    BTab(const BTab&) = delete;
    BTab& operator=(const BTab&) = delete;
    virtual ~BTab();

    BView* View() const { return fView; }
    /// Replaces and deletes the view; the new one is shown at once if this tab is selected.
    virtual void SetView(BView* view);

    /// The label; if none is set, the name of the view.
    const char* Label() const;
    virtual void SetLabel(const char* label);

    bool IsSelected() const { return fSelected; }

    /// Brings the tab to the front: adds the view to the container of `owner`, at the frame that the program gave it.
    /// @param owner  the tab view; its Bounds() are the whole tab view, including the strip. The view itself becomes a
    ///               child of ContainerView(), whose origin lies TabHeight() lower: to convert a place in `owner`,
    ///               subtract TabHeight() from its y
    virtual void Select(BView* owner);
    /// Sends the tab to the back: removes the view from the container. The view's detach hooks run while it still has
    /// its window.
    virtual void Deselect();

    /// Paints the label. Called each time the strip is painted, for every visible tab.
    /// @param owner  the tab view
    /// @param frame  the tab, in the coordinates of the tab view
    virtual void DrawLabel(BView* owner, BRect frame);

private:
    friend class BTabView;
    friend class kits::TabStrip;

    std::string fLabel;
    BView* fView = nullptr; ///< owned; a child of the container while the tab is selected
    BTabView* fOwner = nullptr;
    bool fHasLabel = false;
    bool fSelected = false;
};

/// A strip of tabs above a container that shows the view of the selected one.
///
/// The container does no layout: a view keeps the frame that the program gives it, in the coordinates of the container,
/// and follows its size as its resizing mode says.
///
/// A press on the strip reaches MouseDown of the tab view, which selects the tab under it, and the pointer's moves
/// reach MouseMoved. With the focus on the strip, the left and right arrow keys select; from anywhere in the window,
/// Control with Page Up, Page Down or Tab does. Assistive technology learns the labels of the tabs and which one is
/// selected.
///
/// Main thread, or any thread under the looper lock for calls that do not select.
class BTabView : public kits::WidgetView {
public:
    /// @param width  has no effect: each tab is as wide as its label needs
    BTabView(BRect frame, const char* name, button_width width = B_WIDTH_AS_USUAL,
             uint32 resizingMode = B_FOLLOW_ALL_SIDES, uint32 flags = B_WILL_DRAW | B_NAVIGABLE_JUMP | B_NAVIGABLE);
    ~BTabView() override;

    void AttachedToWindow() override;
    void MouseDown(BPoint where) override;

    /// Adds a tab at the end. Does not select anything.
    /// @param target  the view of the tab; owned by the tab from here. May be null if `tab` has its view
    /// @param tab     owned from here; null makes a plain one
    virtual void AddTab(BView* target, BTab* tab = nullptr);
    /// Null if there is none.
    virtual BTab* TabAt(int32 index) const;
    int32 CountTabs() const { return static_cast<int32>(fTabs.size()); }

    /// Brings a tab to the front: Deselect of the previous one, then Select of this one. Does nothing for a bad index,
    /// or for the tab that is selected already.
    virtual void Select(int32 index);
    /// The index of the selected tab; -1 until one is selected.
    int32 Selection() const { return fSelection; }

    /// The strip's height in pixels; its rows are 0 to TabHeight() - 1.
    float TabHeight() const;

    /// The view below the strip that contains the selected tab's view. Owned by the tab view.
    BView* ContainerView() const { return fContainer; }

    void GetPreferredSize(float* width, float* height) override;

private:
    friend class BTab;
    friend class kits::TabStrip;

    void WidgetCreated(QWidget* widget) override;
    QWidget* MakeWidget() override;
    void UpdateWidget() override;
    kits::TabStrip* Strip();
    void PaintLabel();
    void LayOut();

    std::vector<std::unique_ptr<BTab>> fTabs;
    BView* fContainer;
    int32 fSelection = -1;
};
