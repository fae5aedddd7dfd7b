// A window that shows one model.

#pragma once

#include <memory>
#include <string>

#include "model/graph.h"
#include "model/node_times.h"
#include "sv/image.h"
#include "sv/window.h"

namespace zelhost {

// A model that has been read.
struct Model {
    std::string path;  // as given
    std::string name;  // of its exports
    Graph graph;
};

class ModelWindow : public SV::MDIChild {
public:
    ModelWindow(SV::MDIFrame& frame, std::shared_ptr<const Model> model);
    ~ModelWindow() override;

    const std::shared_ptr<const Model>& model() const { return m_model; }

private:
    void Paint(HDC__* device) override;
    void paintPicture(HDC__* device, SV::Size area);
    void paintTimes(HDC__* device, SV::Size client);
    void fit(SV::Size client);

    std::shared_ptr<const Model> m_model;
    NodeTimes m_times;
    SV::Image m_picture;
    SV::Image m_fitted;  // in the size last painted
};

}  // namespace zelhost
