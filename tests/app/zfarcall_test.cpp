#include "zbasic/zfarcall.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <thread>
#include <utility>

namespace {

ZelMemBuf echo(const ZelInputData& input) {
    const std::string text = "echo " + std::string(input.getText());
    return {text.data(), text.size()};
}

ZelMemBuf nothing(const ZelInputData&) { return {}; }

ZelMemBuf registering(const ZelInputData& input) {
    ZelFarCallFactory& calls = ZelFarCallFactory::Instance();
    calls.registerReceiver("inner", echo);
    ZelMemBuf answer;
    calls.call("inner", input, answer);
    return answer;
}

}  // namespace

TEST(FarCalls, ReachTheFirstReceiverOfTheName) {
    ZelFarCallFactory* instances[4] = {};
    {
        std::jthread threads[4];
        for (int i = 0; i < 4; ++i) {
            threads[i] = std::jthread([&, i] { instances[i] = &ZelFarCallFactory::Instance(); });
        }
    }
    ZelFarCallFactory& calls = ZelFarCallFactory::Instance();
    for (const ZelFarCallFactory* instance : instances) EXPECT_EQ(instance, &calls);

    EXPECT_TRUE(calls.registerReceiver("echo", echo));
    EXPECT_FALSE(calls.registerReceiver("echo", nothing));
    EXPECT_TRUE(calls.registerReceiver("Echo", nothing)) << "case matters";
    EXPECT_TRUE(calls.registerReceiver(SV::String("echo\0", 5), nothing));
    EXPECT_TRUE(calls.registerReceiver("null", nullptr));
    EXPECT_TRUE(calls.registerReceiver("registering", registering));

    ZelMemBuf output("old", 3);
    const ZelInputData input("a\0b", 3);
    EXPECT_FALSE(calls.call("unknown", input, output));
    EXPECT_FALSE(calls.call("null", input, output));
    EXPECT_EQ(output.getText(), "old");
    EXPECT_TRUE(calls.call("echo", input, output));
    EXPECT_EQ(output.getText(), std::string("echo a\0b", 8));
    EXPECT_TRUE(calls.call("registering", ZelInputData("x"), output));
    EXPECT_EQ(output.getText(), "echo x");
    EXPECT_TRUE(calls.call("Echo", ZelInputData(), output));
    EXPECT_EQ(output.getData(), nullptr);
    EXPECT_EQ(output.getSize(), 0u);
}

TEST(FarCalls, HandBuffersOn) {
    ZelMemBuf first("abc", 3);
    std::memcpy(first.getData(), "x", 1);
    const void* const data = first.getData();
    const ZelMemBuf& oldFirst = first;
    ZelMemBuf second(std::move(first));
    const ZelMemBuf& oldSecond = second;
    EXPECT_EQ(oldFirst.getSize(), 0u);
    EXPECT_EQ(oldFirst.getData(), nullptr);
    first = std::move(second);
    EXPECT_EQ(first.getData(), data) << "moved, not copied";
    EXPECT_EQ(first.getText(), "xbc");
    EXPECT_EQ(oldSecond.getSize(), 0u);
    ZelMemBuf& same = first;
    first = std::move(same);
    EXPECT_EQ(first.getText(), "xbc");
    EXPECT_EQ(ZelMemBuf(nullptr, 0).getData(), nullptr);
}
