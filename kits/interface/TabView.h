// SPDX-License-Identifier: MIT
#pragma once

#include "kits/interface/View.h"

#include <memory>
#include <string>
#include <vector>

class BTabView;

namespace kits {
class Content;
class TabStrip;
} // namespace kits

/// One tab of a tab view: a label on the strip, and the view that shows while the tab is selected.
///
/// A tab belongs to one tab view at most, which deletes it, and owns its view, also while the view is shown. While its
/// tab is not selected the view is in no window.
class BTab {
public:
    /// @param view  owned from here; may be null and come with BTabView::AddTab
    explicit BTab(BView* view = nullptr);
    BTab(const BTab&) = delete;
    BTab& operator=(const BTab&) = delete;
    virtual ~BTab();

    BView* View() const { return fView; }
    /// Replaces the view and deletes the former one; it is shown at once when this tab is selected.
    virtual void SetView(BView* view);

    /// The label; as long as none is set, the name of the view.
    const char* Label() const;
    virtual void SetLabel(const char* label);

    bool IsSelected() const { return fSelected; }

    /// The tab comes to the front: adds the view to the container of `owner`, at the frame that the program gave it.
    /// @param owner  the tab view; its Bounds() are the whole tab view, strip included. The view itself becomes a child
    ///               of ContainerView(), whose origin lies TabHeight() lower: a place in `owner` has to be converted,
    ///               or its y be taken less by TabHeight()
    virtual void Select(BView* owner);
    /// The tab goes to the back: removes the view from the container. The view's detach hooks run while it still has
    /// its window.
    virtual void Deselect();

    /// Paints the label. Called each time the strip is painted, for every tab that shows.
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
/// The container lays nothing out: a view keeps the frame that the program gives it, in the coordinates of the
/// container, and follows its size as its resizing mode says.
///
/// A press on the strip reaches MouseDown of the tab view, which selects the tab under it, and the pointer's moves
/// reach MouseMoved. With the focus on the strip the left and right arrow keys select, and from anywhere
/// in the window Control with Page Up, Page Down or Tab. Which tab has which label and
/// which is selected is told to assistive technology.
///
/// Main thread, or any thread under the looper lock for what does not select.
class BTabView : public BView {
public:
    /// @param width  B_WIDTH_FROM_WIDEST makes all tabs as wide as the widest; else each is as wide as its label asks
    /// for
    BTabView(BRect frame, const char* name, button_width width = B_WIDTH_AS_USUAL,
             uint32 resizingMode = B_FOLLOW_ALL_SIDES, uint32 flags = B_WILL_DRAW | B_NAVIGABLE_JUMP | B_NAVIGABLE);
    ~BTabView() override;

    void AttachedToWindow() override;
    void MouseDown(BPoint where) override;

    /// Adds a tab at the end. Nothing is selected by that.
    /// @param target  the view of the tab; owned by the tab from here. May be null when `tab` has its view
    /// @param tab     owned from here; null makes a plain one
    virtual void AddTab(BView* target, BTab* tab = nullptr);
    /// Null when there is none.
    virtual BTab* TabAt(int32 index) const;
    int32 CountTabs() const { return static_cast<int32>(fTabs.size()); }

    /// Brings a tab to the front: Deselect of the one before, then Select of this. Nothing happens for a bad index, and
    /// for the tab that is selected already.
    virtual void Select(int32 index);
    /// The index of the selected tab; -1 as long as none was selected.
    int32 Selection() const { return fSelection; }

    /// Pixels of the strip's height, in which its rows are 0 to TabHeight() - 1.
    float TabHeight() const;

    /// The view below the strip in which the selected tab's view lies. Owned by the tab view.
    BView* ContainerView() const { return fContainer; }

    void GetPreferredSize(float* width, float* height) override;

private:
    friend class BTab;
    friend class kits::TabStrip;

    void WidgetCreated(QWidget* widget) override;
    void ViewColorChanged() override;
    kits::TabStrip* Strip();
    void PaintLabel();
    void UpdateWidget();
    void WidgetNeedsUpdate();
    void LayOut();

    std::unique_ptr<kits::Content> fContent;
    std::vector<std::unique_ptr<BTab>> fTabs;
    BView* fContainer;
    int32 fSelection = -1;
    button_width fTabWidth;
};
