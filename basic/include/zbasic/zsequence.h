// The library's sequence interface.

#pragma once

#include <vector>

// Where an operation puts a series of results. Callers bring their own container
// by deriving from this, or take `ZelVectorSequence`.
template <class T>
class ISequence {
public:
    virtual ~ISequence() = default;

    virtual void clear() = 0;
    virtual void append(const T& element) = 0;
};

// A sequence over a vector, for callers without a container of their own.
template <class T>
class ZelVectorSequence : public ISequence<T> {
public:
    void clear() override { m_elements.clear(); }
    void append(const T& element) override {
        if (m_elements.capacity() == 0) m_elements.reserve(kUsualSize);
        m_elements.push_back(element);
    }

    const std::vector<T>& elements() const { return m_elements; }

private:
    enum { kUsualSize = 8 };  // results are seldom single; saves growing by one and two

    std::vector<T> m_elements;
};
