// A window that shows one model.

#pragma once

#include <memory>
#include <optional>
#include <string>

#include "filter_bar.h"
#include "model/caption_filter.h"
#include "model/graph.h"
#include "model/node_times.h"
#include "side_task.h"
#include "sv/datetime.h"
#include "sv/image.h"
#include "sv/window.h"

namespace zelhost {

// A model that has been read.
struct Model {
    std::string path;               // as given
    std::optional<SV::Date> since;  // it is the part that was changed from that day on
    std::string name;               // of its exports
    Graph graph;
    std::shared_ptr<const SV::Image> picture;  // null: not drawn yet
};

// What a filter leaves of a model.
struct Filtered {
    std::size_t nodes = 0;
    std::shared_ptr<const SV::Image> picture;
};

// The picture of a model, with a field above it that filters the nodes: of the picture only, what
// is exported stays the whole model.
class ModelWindow : public SV::MDIChild {
public:
    ModelWindow(SV::MDIFrame& frame, std::shared_ptr<const Model> model);
    ~ModelWindow() override;

    const std::shared_ptr<const Model>& model() const { return m_model; }
    void languageChanged();
    void clearFilter();

private:
    void Paint(HDC__* device) override;
    void paintPicture(HDC__* device, int top, SV::Size area);
    SV::String timesText() const;
    int timesHeight(HDC__* device, const SV::String& text, int width) const;
    void paintTimes(HDC__* device, const SV::String& text, int top);
    void Resized(SV::Size client) override;
    std::intptr_t handle(unsigned message, std::uintptr_t wParam, std::intptr_t lParam) override;
    void applyFilter();
    void startFilter(const SV::String& pattern);
    void lookForFiltered();
    void showFiltered();
    void show(const Filtered& filtered);
    void showOutcome();
    void fit(SV::Size client);

    std::shared_ptr<const Model> m_model;
    NodeTimes m_times;
    FilterBar m_filterBar;
    std::size_t m_shownNodes;
    bool m_isFilterUsable = true;
    bool m_isFilterOutdated = false;                // other letters were typed since it began
    std::optional<SideTask<Filtered>> m_filtering;  // while it is not shown yet
    std::shared_ptr<const SV::Image> m_picture;     // null when memory ran out
    SV::Image m_fitted;                             // in the size last painted
};

}  // namespace zelhost
