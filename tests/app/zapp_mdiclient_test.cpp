// What is painted behind the windows of models.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "app/speaking_application.h"
#include "sv/window.h"
#include "zbasic/zgui.h"

#include <windows.h>

namespace {

class PictureApplication : public SpeakingApplication {
public:
    bool getMDIClientImage(SV::Image& image, int& mode) override {
        image = background;
        mode = backgroundMode;
        return !background.IsEmpty();
    }
    void setBackground(const SV::Image& image, int mode) {
        m_clientImage = SV::Bitmap(image);
        m_clientImageMode = mode;
    }
    SV::Size clientImageSize() const { return m_clientImage.GetSize(); }

    SV::Image background;
    int backgroundMode = kNoImage;
};

SV::Image filledImage(SV::Size size, std::uint32_t color) {
    SV::Image image(size);
    for (int y = 0; y < size.height; ++y) std::fill_n(image.GetRow(y), size.width, color);
    return image;
}

constexpr COLORREF kGreen = RGB(0, 200, 0);
constexpr COLORREF kBlue = RGB(0, 0, 200);

// Green with a blue pixel in its upper left corner.
SV::Image markedImage(SV::Size size) {
    SV::Image image = filledImage(size, 0x00C800);
    image.GetRow(0)[0] = 0x0000C8;
    return image;
}

}  // namespace

TEST(ZelMdiClient, PaintsTheBackgroundInEveryMode) {
    PictureApplication application;
    SV::MDIFrame frame("painted");
    ::MoveWindow(frame.GetClient(), 0, 0, 104, 64, FALSE);  // 100 x 60 inside its edge
    RECT area;
    ::GetClientRect(frame.GetClient(), &area);
    ASSERT_EQ(area.right, 100);
    ASSERT_EQ(area.bottom, 60);
    frame.Show();
    application.Reschedule();
    ::MoveWindow(frame.GetClient(), 0, 0, 104, 64, FALSE);
    application.Reschedule();

    const COLORREF workspace =
        ZelThemeManager::Instance().GetColor(ZelThemeManager::kWorkspace).GetRef();
    struct Pixel {
        int x, y;
        COLORREF color;
    };
    struct Case {
        const char* why;
        int mode;
        SV::Size size;
        std::vector<Pixel> pixels;
    };
    const Case cases[] = {
        {"none", 0, {10, 10}, {{1, 1, workspace}, {50, 30, workspace}, {98, 58, workspace}}},
        {"stretched", 1, {98, 58}, {{1, 1, kBlue}, {2, 1, kGreen}, {98, 58, kGreen}}},
        {"fitted: from the middle of a larger one",
         2,
         {100, 60},
         {{1, 1, kGreen}, {98, 58, kGreen}}},
        {"fitted: of just that size", 2, {98, 58}, {{1, 1, kBlue}, {98, 58, kGreen}}},
        {"centred",
         3,
         {18, 18},
         {{40, 20, kBlue},
          {57, 37, kGreen},
          {58, 37, workspace},
          {39, 20, workspace},
          {1, 1, workspace}}},
        {"tiled", 4, {20, 20}, {{1, 1, kBlue}, {21, 1, kBlue}, {81, 41, kBlue}, {22, 2, kGreen}}},
    };
    for (const auto& [why, mode, size, pixels] : cases) {
        SCOPED_TRACE(why);
        application.setBackground(markedImage(size), mode);
        application.PaintMDIClient(frame.GetClient());
        const HDC device = ::GetDC(frame.GetClient());
        for (const auto& [x, y, color] : pixels) {
            EXPECT_EQ(::GetPixel(device, x, y), color) << x << "," << y;
        }
        const COLORREF border = ::GetPixel(device, 0, 0);
        EXPECT_NE(border, workspace);
        EXPECT_EQ(::GetPixel(device, 99, 59), border);
        EXPECT_EQ(::GetPixel(device, 50, 0), border);
        ::ReleaseDC(frame.GetClient(), device);
    }
}

TEST(ZelMdiClient, PreparesTheBackgroundForTheScreen) {
    const SV::Size screen = {::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
    PictureApplication application;
    EXPECT_FALSE(application.MakeMDIClientImg(false)) << "no picture";

    application.background = filledImage({64, 64}, 0x00C800);
    application.backgroundMode = ZelMDIApplication::kTiled;
    EXPECT_TRUE(application.MakeMDIClientImg(false));
    EXPECT_EQ(application.clientImageSize(), (SV::Size{64, 64})) << "small ones stay as they are";

    application.background = filledImage({screen.width + 10, screen.height + 6}, 0x00C800);
    EXPECT_TRUE(application.MakeMDIClientImg(false));
    EXPECT_EQ(application.clientImageSize(), screen) << "cropped";
    EXPECT_FALSE(application.MakeMDIClientImg(false)) << "done already";
    EXPECT_FALSE(application.MakeMDIClientImg(true)) << "no second screen";

    PictureApplication fitted;
    fitted.background = filledImage({screen.width / 4, screen.height / 2}, 0x00C800);
    fitted.backgroundMode = ZelMDIApplication::kFitted;
    EXPECT_TRUE(fitted.MakeMDIClientImg(false));
    EXPECT_EQ(fitted.clientImageSize(), screen) << "scaled by the larger ratio, then cropped";
}
