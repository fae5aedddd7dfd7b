// The platform's events about models, as this host triggers them.

#pragma once

#include "model/graph.h"
#include "sv/string.h"
#include "zbasic/zevent.h"

namespace zelhost {

// Something happens to a model. For "BeforeSaveModel" it is a question: a handler that sets a
// result value other than 0 forbids it.
class ModelEvent : public ZelEvent {
public:
    ModelEvent(ZelEventType type, SV::String name, const Graph& graph)
        : ZelEvent(type), m_name(std::move(name)), m_graph(graph) {}

    const SV::String& GetName() const { return m_name; }  // of the file, without its extension
    const Graph& GetGraph() const { return m_graph; }

private:
    SV::String m_name;
    const Graph& m_graph;
};

// An event without data, such as "AppInitialized".
class PlainEvent : public ZelEvent {
public:
    explicit PlainEvent(ZelEventType type) : ZelEvent(type) {}
};

}  // namespace zelhost
