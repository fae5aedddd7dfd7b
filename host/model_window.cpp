#include "model_window.h"

#include <algorithm>
#include <new>

#include "hostkeys.h"
#include "model_events.h"
#include "paths.h"
#include "picture.h"
#include "texts.h"
#include "time_texts.h"
#include "zbasic/zgui.h"

#include <windows.h>

namespace zelhost {

namespace {

constexpr UINT_PTR kFilterTimer = 1;
constexpr UINT_PTR kFilteredTimer = 2;
constexpr UINT kTypingPauseMs = 100;  // large pictures take their time
constexpr UINT kLookMs = 50;
constexpr UINT kTimesFormat = DT_WORDBREAK | DT_NOPREFIX;

// As large as fits into the window without being enlarged.
SV::Size fittingSize(SV::Size picture, SV::Size window) {
    const double scale = std::min({1.0, static_cast<double>(window.width) / picture.width,
                                   static_cast<double>(window.height) / picture.height});
    return {std::max(1, static_cast<int>(picture.width * scale)),
            std::max(1, static_cast<int>(picture.height * scale))};
}

// In the size that the letters of the screen have.
std::shared_ptr<const SV::Image> drawnForScreen(const Graph& graph,
                                                const std::stop_token& stop = {}) {
    return std::make_shared<const SV::Image>(drawPicture(graph, Zel_GetSystemDPIScaleY(), stop));
}

std::shared_ptr<const SV::Image> pictureOf(const Model& model, const std::stop_token& stop = {}) {
    const bool isLarger = isReadable(model.graph) && Zel_GetSystemDPIScaleY() != 1;
    return model.picture && !isLarger ? model.picture : drawnForScreen(model.graph, stop);
}

// Nothing when memory runs out.
Filtered filteredBy(const SV::String& pattern, const Model& model, const std::stop_token& stop) {
    try {
        Graph graph = model.graph;
        CaptionFilter(pattern).apply(graph);
        const std::size_t count = graph.nodes.size();
        const bool isWhole = count == model.graph.nodes.size();
        return {count, isWhole ? pictureOf(model, stop) : drawnForScreen(graph, stop)};
    } catch (const std::bad_alloc&) {
        return {};
    }
}

SV::String titleOf(const Model& model) {
    const SV::String file(fileNameOf(model.path));
    return model.since ? file + " - " + filled(Text::kChangedSince, shownDay(*model.since)) : file;
}

}  // namespace

ModelWindow::ModelWindow(SV::MDIFrame& frame, std::shared_ptr<const Model> model)
    : SV::MDIChild(frame, titleOf(*model)),
      m_model(std::move(model)),
      m_times(timesOf(m_model->graph)),
      m_filterBar(*this, m_model->graph.nodes.size()),
      m_shownNodes(m_model->graph.nodes.size()),
      m_picture(pictureOf(*m_model)) {
    // What this window paints must not cover the field.
    ::SetWindowLongPtrA(GetHandle(), GWL_STYLE,
                        ::GetWindowLongPtrA(GetHandle(), GWL_STYLE) | WS_CLIPCHILDREN);
    languageChanged();
    m_filterBar.focus();  // the window had the focus before there was a field
    ModelEvent(ZelEvent_AfterCreateModelWindow, SV::String(m_model->name), m_model->graph)
        .trigger();
    Invalidate();
}

ModelWindow::~ModelWindow() {
    ModelEvent(ZelEvent_AfterDiscardModelWindow, SV::String(m_model->name), m_model->graph)
        .trigger();
}

void ModelWindow::languageChanged() {
    SetText(titleOf(*m_model));
    m_filterBar.layOut(GetClientSize().width);
    showOutcome();
    Invalidate();  // the line with the times is painted
}

void ModelWindow::clearFilter() { m_filterBar.clear(); }

void ModelWindow::Resized(SV::Size client) { m_filterBar.layOut(client.width); }

std::intptr_t ModelWindow::handle(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) {
    const bool isChange = message == WM_COMMAND && HIWORD(wParam) == EN_CHANGE &&
                          LOWORD(wParam) == FilterBar::kFieldId;
    if (isChange) {
        ::SetTimer(GetHandle(), kFilterTimer, kTypingPauseMs, nullptr);  // anew with each letter
        return 0;
    }
    if (message == WM_TIMER && wParam == kFilterTimer) {
        ::KillTimer(GetHandle(), kFilterTimer);
        applyFilter();
        return 0;
    }
    if (message == WM_TIMER && wParam == kFilteredTimer) {
        lookForFiltered();
        return 0;
    }
    if (message == WM_KEYDOWN && carryOutKey(*this, wParam)) return 0;
    const std::intptr_t result = SV::MDIChild::handle(message, wParam, lParam);
    if (message == WM_SETFOCUS) m_filterBar.focus();
    return result;
}

// Beside the main thread: a large model takes seconds. One at a time: what is under way ends before
// what was typed since begins.
void ModelWindow::applyFilter() {
    if (m_filtering && !m_filtering->isDone()) {
        m_filtering->stop();
        m_isFilterOutdated = true;
        return;
    }
    ::KillTimer(GetHandle(), kFilteredTimer);
    m_filtering.reset();
    m_isFilterOutdated = false;
    const SV::String typed = m_filterBar.pattern();
    const SV::String pattern = typed.empty() ? SV::String("*") : typed;
    m_isFilterUsable = CaptionFilter(pattern).isUsable();
    if (m_isFilterUsable) startFilter(pattern);
    showOutcome();
}

void ModelWindow::startFilter(const SV::String& pattern) {
    try {
        m_filtering.emplace([pattern, model = m_model](const std::stop_token& stop) {
            return filteredBy(pattern, *model, stop);
        });
    } catch (const std::exception&) {  // no thread can be had
        return show({});
    }
    if (m_filtering->isDone(std::chrono::milliseconds(kLookMs))) return showFiltered();
    ::SetTimer(GetHandle(), kFilteredTimer, kLookMs, nullptr);
}

void ModelWindow::lookForFiltered() {
    if (!m_filtering || !m_filtering->isDone()) return;
    if (m_isFilterOutdated) return applyFilter();
    showFiltered();
}

void ModelWindow::showFiltered() {
    ::KillTimer(GetHandle(), kFilteredTimer);
    const Filtered filtered = m_filtering->take();
    m_filtering.reset();
    show(filtered);
}

void ModelWindow::show(const Filtered& filtered) {
    m_shownNodes = filtered.nodes;
    m_picture = filtered.picture;
    m_fitted = SV::Image();
    showOutcome();
    Invalidate();
}

void ModelWindow::showOutcome() {
    if (!m_isFilterUsable) return m_filterBar.showUnusable();
    if (m_filtering) return m_filterBar.showBusy();
    m_filterBar.showCount(m_shownNodes);
}

// Scaled once a size: the system's own scaling loses thin lines.
void ModelWindow::fit(SV::Size client) {
    const SV::Size size = fittingSize(m_picture->GetSize(), client);
    if (m_fitted.GetSize() == size) return;
    m_fitted = *m_picture;
    if (!(size == m_picture->GetSize())) m_fitted.Rescale(size);
}

void ModelWindow::Paint(HDC__* device) {
    const int top = m_filterBar.height();
    SV::Size client = GetClientSize();
    const RECT bar = {0, 0, client.width, top};
    ::FillRect(device, &bar, ::GetSysColorBrush(COLOR_3DFACE));
    const RECT all = {0, top, client.width, client.height};
    ::FillRect(device, &all, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
    client.height -= top;
    const SV::String times = timesText();
    client.height -= timesHeight(device, times, client.width);
    paintPicture(device, top, client);
    paintTimes(device, times, top + client.height);
}

void ModelWindow::paintPicture(HDC__* device, int top, SV::Size area) {
    if (!m_picture || m_picture->IsEmpty() || area.width < 1 || area.height < 1) return;
    fit(area);
    const SV::Size size = m_fitted.GetSize();
    m_fitted.Draw(device, (area.width - size.width) / 2, top + (area.height - size.height) / 2);
}

// In the language of the moment; empty when the model has none.
SV::String ModelWindow::timesText() const {
    SV::String text;
    if (m_times.durations > 0) text = filled(Text::kTotal, shownDuration(m_times.total));
    if (!m_times.lastChange.empty()) {
        if (!text.empty()) text += "   ";
        text += filled(Text::kLastChange, shownChange(m_times.lastChange));
    }
    return text;
}

// In a narrow window the text takes several lines.
int ModelWindow::timesHeight(HDC__* device, const SV::String& text, int width) const {
    if (text.empty()) return 0;
    const int margin = m_filterBar.margin();
    RECT lines = {0, 0, width - 2 * margin, 0};
    const HGDIOBJ previous = ::SelectObject(device, m_filterBar.font());
    ::DrawTextA(device, text.c_str(), static_cast<int>(text.size()), &lines,
                kTimesFormat | DT_CALCRECT);
    ::SelectObject(device, previous);
    return static_cast<int>(lines.bottom) + 2 * margin;
}

void ModelWindow::paintTimes(HDC__* device, const SV::String& text, int top) {
    const SV::Size client = GetClientSize();
    const int margin = m_filterBar.margin();
    RECT lines = {margin, top + margin, client.width - margin, client.height};
    const HGDIOBJ previous = ::SelectObject(device, m_filterBar.font());
    ::SetBkMode(device, TRANSPARENT);
    ::SetTextColor(device, RGB(60, 60, 60));
    ::DrawTextA(device, text.c_str(), static_cast<int>(text.size()), &lines, kTimesFormat);
    ::SelectObject(device, previous);
}

}  // namespace zelhost
