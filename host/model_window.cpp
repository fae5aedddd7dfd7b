#include "model_window.h"

#include <algorithm>

#include "model_events.h"
#include "picture.h"

#include <windows.h>

namespace zelhost {

namespace {

// As large as it fits without being enlarged, in the middle.
RECT placeOf(SV::Size picture, SV::Size window) {
    const double scale = std::min({1.0, static_cast<double>(window.width) / picture.width,
                                   static_cast<double>(window.height) / picture.height});
    const int width = static_cast<int>(picture.width * scale);
    const int height = static_cast<int>(picture.height * scale);
    const int left = (window.width - width) / 2;
    const int top = (window.height - height) / 2;
    return {left, top, left + width, top + height};
}

}  // namespace

ModelWindow::ModelWindow(SV::MDIFrame& frame, std::shared_ptr<const Model> model)
    : SV::MDIChild(frame, SV::String(model->path)),
      m_model(std::move(model)),
      m_picture(drawPicture(m_model->graph)) {
    ModelEvent(ZelEvent_AfterCreateModelWindow, SV::String(m_model->name), m_model->graph)
        .trigger();
    Invalidate();
}

ModelWindow::~ModelWindow() {
    ModelEvent(ZelEvent_AfterDiscardModelWindow, SV::String(m_model->name), m_model->graph)
        .trigger();
}

void ModelWindow::Paint(HDC__* device) {
    const SV::Size client = GetClientSize();
    const RECT all = {0, 0, client.width, client.height};
    ::FillRect(device, &all, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
    if (m_picture.IsEmpty() || client.width < 1 || client.height < 1) return;
    const RECT place = placeOf(m_picture.GetSize(), client);
    const HDC source = ::CreateCompatibleDC(device);
    const HGDIOBJ previous = ::SelectObject(source, m_picture.GetHandle());
    ::SetStretchBltMode(device, HALFTONE);
    ::SetBrushOrgEx(device, 0, 0, nullptr);
    ::StretchBlt(device, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 source, 0, 0, m_picture.GetSize().width, m_picture.GetSize().height, SRCCOPY);
    ::SelectObject(source, previous);
    ::DeleteDC(source);
}

}  // namespace zelhost
