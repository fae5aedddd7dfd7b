#include "sv/window.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "sv/image.h"
#include "support/box_watcher.h"

#include <windows.h>

namespace {

constexpr std::uint32_t kRed = 0xFF0000, kBlue = 0x0000FF;

// Left half red, right half blue.
SV::Image twoColors(SV::Size size) {
    SV::Image image(size);
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) image.GetRow(y)[x] = 2 * x < size.width ? kRed : kBlue;
    }
    return image;
}

class PaintingApplication : public SV::MDIApplication {
public:
    bool IsUserDefPaintMDIClient() override { return true; }
    void PaintMDIClient(HWND client) override {
        const HDC device = ::GetDC(client);
        RECT area;
        ::GetClientRect(client, &area);
        const HBRUSH brush = ::CreateSolidBrush(RGB(10, 20, 30));
        ::FillRect(device, &area, brush);
        ::DeleteObject(brush);
        ::ReleaseDC(client, device);
        isPainted = true;
    }
    void SysChange(SV::SysChangeType type) override { changes.push_back(type); }

    bool isPainted = false;
    std::vector<SV::SysChangeType> changes;
};

class NotingChild : public SV::MDIChild {
public:
    using SV::MDIChild::MDIChild;
    int paints = 0;
    bool mayClose = true;
    bool isThrowing = false;

private:
    void Paint(HDC__*) override {
        ++paints;
        failOnDemand();
    }
    bool QueryClose() override {
        failOnDemand();
        return mayClose;
    }
    void failOnDemand() const {
        if (isThrowing) throw std::runtime_error("asked for");
    }
};

}  // namespace

TEST(SvImage, ScalesByAveraging) {
    SV::Image image = twoColors({4, 2});
    ASSERT_TRUE(image.Rescale({2, 1}));
    EXPECT_EQ(image.GetRow(0)[0], kRed);
    EXPECT_EQ(image.GetRow(0)[1], kBlue);
    ASSERT_TRUE(image.Rescale({1, 1}));
    EXPECT_EQ(image.GetRow(0)[0], 0x800080u);
    ASSERT_TRUE(image.Rescale({3, 3}));
    EXPECT_EQ(image.GetRow(2)[2], 0x800080u);
    EXPECT_FALSE(image.Rescale({0, 5}));
    EXPECT_EQ(image.GetSize(), (SV::Size{3, 3}));
}

TEST(SvImage, CropsInclusivelyAndWithinItsEdges) {
    struct Case {
        const char* why;
        int left, top, right, bottom;
        SV::Size size;
        bool result;
    };
    const Case cases[] = {
        {"whole", 0, 0, 9, 3, {10, 4}, true},      {"beyond", -5, -5, 100, 100, {10, 4}, true},
        {"one pixel", 5, 1, 5, 1, {1, 1}, true},   {"inverted", 5, 0, 4, 3, {10, 4}, false},
        {"outside", 20, 0, 30, 3, {10, 4}, false},
    };
    for (const auto& [why, left, top, right, bottom, size, result] : cases) {
        SCOPED_TRACE(why);
        SV::Image image = twoColors({10, 4});
        EXPECT_EQ(image.Crop(left, top, right, bottom), result);
        EXPECT_EQ(image.GetSize(), size);
    }
    SV::Image right = twoColors({10, 4});
    right.Crop(5, 0, 9, 3);
    EXPECT_EQ(right.GetRow(3)[0], kBlue);
}

TEST(SvVirtualDevice, GivesBackWhatWasDrawn) {
    const SV::VirtualDevice device({8, 8});
    ASSERT_NE(device.GetDC(), nullptr);
    twoColors({4, 4}).Draw(device.GetDC(), 2, 2);
    const SV::Image image = device.GetImage();
    EXPECT_EQ(image.GetRow(1)[1] & 0xFFFFFF, 0u);
    EXPECT_EQ(image.GetRow(2)[2] & 0xFFFFFF, kRed);
    EXPECT_EQ(image.GetRow(5)[5] & 0xFFFFFF, kBlue);
    const SV::Bitmap bitmap = device.GetBitmap();
    SV::Bitmap copy;
    copy = bitmap;
    EXPECT_EQ(copy.GetHandle(), bitmap.GetHandle());
    EXPECT_EQ(copy.GetSize(), (SV::Size{8, 8}));
}

TEST(SvWindow, FrameAndChildrenWorkAsTheSystemHasThem) {
    PaintingApplication application;
    SV::MDIFrame frame("Frame");
    ASSERT_NE(frame.GetHandle(), nullptr);
    EXPECT_EQ(SV::Application::GetAppWindow(), &frame);
    frame.Show();
    application.Reschedule();
    EXPECT_TRUE(application.isPainted);
    EXPECT_EQ(frame.GetText(), "Frame");

    NotingChild first(frame, "First");
    NotingChild second(frame, "Second");
    frame.Tile();
    application.Reschedule();
    EXPECT_EQ(frame.GetActiveChild(), &second);
    first.Activate();
    EXPECT_EQ(frame.GetActiveChild(), &first);
    EXPECT_GT(first.paints, 0);

    first.mayClose = false;
    first.Close();
    EXPECT_NE(first.GetHandle(), nullptr);
    first.mayClose = true;
    first.Close();
    EXPECT_EQ(first.GetHandle(), nullptr);
    EXPECT_EQ(frame.GetActiveChild(), &second);

    ::SendMessageA(frame.GetHandle(), WM_SYSCOLORCHANGE, 0, 0);
    ASSERT_FALSE(application.changes.empty());
    EXPECT_EQ(application.changes.back(), SV::SysChangeType::kColors);

    frame.Close();
    EXPECT_EQ(frame.GetHandle(), nullptr);
    application.Execute();  // returns at once: closing the frame ended it
}

TEST(SvWindow, WhatItsOperationsThrowComesOutOfTheMessageLoop) {
    SV::MDIApplication application;
    SV::MDIFrame frame("Frame");
    NotingChild child(frame, "Child");
    frame.Show();
    application.Reschedule();

    child.isThrowing = true;
    const int before = child.paints;
    child.Invalidate();
    EXPECT_THROW(application.Reschedule(), std::runtime_error);
    application.Reschedule();  // the area counts as painted, and the exception is gone
    EXPECT_EQ(child.paints, before + 1);

    child.Close();                                            // a message that is sent
    EXPECT_THROW(application.Execute(), std::runtime_error);  // which does not wait for another one
    EXPECT_NE(child.GetHandle(), nullptr);
}

TEST(SvWindow, SuppressedWindowsAreMadeButNotShown) {
    SV::MDIApplication application;
    SV::Application::SetShowWindowSuppression(true);
    SV::MDIFrame frame("Unseen");
    frame.Show();
    EXPECT_NE(frame.GetHandle(), nullptr);
    EXPECT_FALSE(frame.IsVisible());
    SV::Application::SetShowWindowSuppression(false);
}

TEST(SvMessageBox, ShowsTheTextAndLeavesTheBusyStateMeanwhile) {
    SV::Application application;
    application.Wait(true);
    const BoxWatcher watcher(IDCANCEL);
    EXPECT_EQ(SV::ShowMessageBox(nullptr, "The text", "The caption", MB_OKCANCEL), IDCANCEL);
    EXPECT_TRUE(application.IsWait());
    ASSERT_EQ(watcher.seen().size(), 1u);
    EXPECT_EQ(watcher.seen()[0].caption, "The caption");
    EXPECT_EQ(watcher.seen()[0].text, "The text");
    EXPECT_EQ(watcher.seen()[0].buttons.size(), 2u);
}
