// Delivering one event to 1, 10 and 100 receivers: this library, plain member
// calls (the floor of what is known when compiling), calls through a list of
// member pointers (the floor of what is not), and Boost.Signals2.

#include <benchmark/benchmark.h>

#include <boost/signals2/signal.hpp>
#include <cstdint>
#include <vector>

#include "zbasic/zevent.h"

namespace {

constexpr ZelEventType kType = ZelEvent_SaveModel;

class BenchEvent : public ZelEvent {
public:
    BenchEvent() : ZelEvent(kType) {}
};

class Receiver : public ZelEventListener {
public:
    // Not inlined: a handler is code that lies elsewhere.
    [[gnu::noinline]] void onEvent(ZelEvent* event) {
        m_sum += static_cast<std::uint64_t>(event->getEventType());
    }
    std::uint64_t sum() const { return m_sum; }

private:
    std::uint64_t m_sum = 0;
};

class Receivers {
public:
    explicit Receivers(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) m_all.push_back(new Receiver);
    }
    Receivers(const Receivers&) = delete;
    Receivers& operator=(const Receivers&) = delete;
    ~Receivers() {
        std::uint64_t sum = 0;
        for (const Receiver* receiver : m_all) {
            sum += receiver->sum();
            delete receiver;
        }
        benchmark::DoNotOptimize(sum);
    }
    const std::vector<Receiver*>& all() const { return m_all; }

private:
    std::vector<Receiver*> m_all;
};

void listenAll(const Receivers& receivers) {
    for (Receiver* receiver : receivers.all()) {
        receiver->setEventHandler(kType, static_cast<ZelEventListener::Handler>(&Receiver::onEvent),
                                  0);
    }
}

void plainMemberCalls(benchmark::State& state) {
    const Receivers receivers(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        BenchEvent event;
        for (Receiver* receiver : receivers.all()) receiver->onEvent(&event);
    }
}

void memberPointerCalls(benchmark::State& state) {
    struct Call {
        ZelEventListener* listener;
        ZelEventListener::Handler handler;
    };
    const Receivers receivers(static_cast<std::size_t>(state.range(0)));
    std::vector<Call> calls;
    for (Receiver* receiver : receivers.all()) {
        calls.push_back({receiver, static_cast<ZelEventListener::Handler>(&Receiver::onEvent)});
    }
    benchmark::DoNotOptimize(calls.data());
    for (auto _ : state) {
        BenchEvent event;
        for (const auto& [listener, handler] : calls) (listener->*handler)(&event);
    }
}

void trigger(benchmark::State& state) {
    const Receivers receivers(static_cast<std::size_t>(state.range(0)));
    listenAll(receivers);
    for (auto _ : state) {
        BenchEvent event;
        event.trigger();
    }
}

void boostSignals2(benchmark::State& state) {
    const Receivers receivers(static_cast<std::size_t>(state.range(0)));
    boost::signals2::signal<void(ZelEvent*)> signal;
    for (Receiver* receiver : receivers.all()) {
        signal.connect([receiver](ZelEvent* event) { receiver->onEvent(event); });
    }
    for (auto _ : state) {
        BenchEvent event;
        signal(&event);
    }
}

void registerAndSignOff(benchmark::State& state) {
    const Receivers receivers(static_cast<std::size_t>(state.range(0)));
    listenAll(receivers);
    for (auto _ : state) {
        Receiver receiver;
        receiver.setEventHandler(kType, static_cast<ZelEventListener::Handler>(&Receiver::onEvent),
                                 0);
    }
}

void connectAndDisconnectBoost(benchmark::State& state) {
    const Receivers receivers(static_cast<std::size_t>(state.range(0)));
    boost::signals2::signal<void(ZelEvent*)> signal;
    for (Receiver* receiver : receivers.all()) {
        signal.connect([receiver](ZelEvent* event) { receiver->onEvent(event); });
    }
    for (auto _ : state) {
        Receiver receiver;
        const boost::signals2::scoped_connection connection(
            signal.connect([&receiver](ZelEvent* event) { receiver.onEvent(event); }));
    }
}

BENCHMARK(plainMemberCalls)->Arg(1)->Arg(10)->Arg(100);
BENCHMARK(memberPointerCalls)->Arg(1)->Arg(10)->Arg(100);
BENCHMARK(trigger)->Arg(0)->Arg(1)->Arg(10)->Arg(100);
BENCHMARK(boostSignals2)->Arg(1)->Arg(10)->Arg(100);
BENCHMARK(registerAndSignOff)->Arg(1)->Arg(10)->Arg(100);
BENCHMARK(connectAndDisconnectBoost)->Arg(1)->Arg(10)->Arg(100);

}  // namespace

BENCHMARK_MAIN();
