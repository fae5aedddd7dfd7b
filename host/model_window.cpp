#include "model_window.h"

#include <algorithm>

#include "model_events.h"
#include "paths.h"
#include "picture.h"
#include "sv/gdi.h"
#include "texts.h"
#include "time_texts.h"

#include <windows.h>

namespace zelhost {

namespace {

constexpr int kTimesHeight = 22;  // of the line below the picture
constexpr int kTimesFontHeight = 14;
constexpr int kTimesMargin = 8;

// As large as fits into the window without being enlarged.
SV::Size fittingSize(SV::Size picture, SV::Size window) {
    const double scale = std::min({1.0, static_cast<double>(window.width) / picture.width,
                                   static_cast<double>(window.height) / picture.height});
    return {std::max(1, static_cast<int>(picture.width * scale)),
            std::max(1, static_cast<int>(picture.height * scale))};
}

}  // namespace

ModelWindow::ModelWindow(SV::MDIFrame& frame, std::shared_ptr<const Model> model)
    : SV::MDIChild(frame, SV::String(fileNameOf(model->path))),
      m_model(std::move(model)),
      m_times(timesOf(m_model->graph)),
      m_picture(drawPicture(m_model->graph)) {
    ModelEvent(ZelEvent_AfterCreateModelWindow, SV::String(m_model->name), m_model->graph)
        .trigger();
    Invalidate();
}

ModelWindow::~ModelWindow() {
    ModelEvent(ZelEvent_AfterDiscardModelWindow, SV::String(m_model->name), m_model->graph)
        .trigger();
}

// Scaled once a size: the system's own scaling loses thin lines.
void ModelWindow::fit(SV::Size client) {
    const SV::Size size = fittingSize(m_picture.GetSize(), client);
    if (m_fitted.GetSize() == size) return;
    m_fitted = m_picture;
    if (!(size == m_picture.GetSize())) m_fitted.Rescale(size);
}

void ModelWindow::Paint(HDC__* device) {
    const SV::Size client = GetClientSize();
    const RECT all = {0, 0, client.width, client.height};
    ::FillRect(device, &all, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
    if (m_times.durations == 0 && m_times.lastChange.empty()) return paintPicture(device, client);
    paintPicture(device, {client.width, client.height - kTimesHeight});
    paintTimes(device, client);
}

void ModelWindow::paintPicture(HDC__* device, SV::Size area) {
    if (m_picture.IsEmpty() || area.width < 1 || area.height < 1) return;
    fit(area);
    const SV::Size size = m_fitted.GetSize();
    m_fitted.Draw(device, (area.width - size.width) / 2, (area.height - size.height) / 2);
}

// In a line at the bottom, in the language of the moment.
void ModelWindow::paintTimes(HDC__* device, SV::Size client) {
    SV::String text;
    if (m_times.durations > 0) text = filled(Text::kTotal, shownDuration(m_times.total));
    if (!m_times.lastChange.empty()) {
        if (!text.empty()) text += "   ";
        text += filled(Text::kLastChange, shownChange(m_times.lastChange));
    }
    const SV::Font font("Segoe UI", {0, kTimesFontHeight});
    const SV::SelectedObject selected(device, font.Create());
    RECT line = {kTimesMargin, client.height - kTimesHeight, client.width, client.height};
    ::SetBkMode(device, TRANSPARENT);
    ::SetTextColor(device, RGB(60, 60, 60));
    ::DrawTextA(device, text.c_str(), static_cast<int>(text.size()), &line,
                DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
}

}  // namespace zelhost
