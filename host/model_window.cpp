#include "model_window.h"

#include <algorithm>

#include "model_events.h"
#include "paths.h"
#include "picture.h"

#include <windows.h>

namespace zelhost {

namespace {

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
    if (m_picture.IsEmpty() || client.width < 1 || client.height < 1) return;
    fit(client);
    const SV::Size size = m_fitted.GetSize();
    m_fitted.Draw(device, (client.width - size.width) / 2, (client.height - size.height) / 2);
}

}  // namespace zelhost
