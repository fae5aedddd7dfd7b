// The library's sequence interface.

#pragma once

#include <vector>

// Where an operation puts a series of results. Callers bring their own container
// by deriving from this, or take `ZelVectorSequence`.
template <class T>
class ISequence {
public:
    virtual ~ISequence() = default;

    // Operations first drop what is there, then add one result after the other. What these throw
    // reaches the operation's caller.
    virtual void clear() = 0;
    virtual void append(const T& element) = 0;
};

// A sequence over a vector, for callers without a container of their own.
template <class T>
class ZelVectorSequence : public ISequence<T> {
public:
    // Keeps its memory for the next series.
    void clear() override { m_elements.clear(); }
    // `std::bad_alloc` when there is no memory for another element.
    void append(const T& element) override {
        if (m_elements.capacity() == 0) m_elements.reserve(kUsualSize);
        m_elements.push_back(element);
    }

    // In the order in which they were added.
    const std::vector<T>& elements() const { return m_elements; }

private:
    enum { kUsualSize = 8 };  // results are seldom single; saves growing by one and two

    std::vector<T> m_elements;
};
