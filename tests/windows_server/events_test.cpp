#include <gtest/gtest.h>
#include <olectl.h>

#include <memory>

#include "tests/windows_server/sink.h"

namespace mervane::tests {
namespace {

class ServerEvents : public testing::Test {
 protected:
  ServerEvents() {
    classifier->put_EpochCount(10);
    classifier->put_Inputs(*grid(1, 1, {{1, 10}, {9, 90}, {2, 20}, {8, 80}, {5, 50}}).get());
  }
  Classifier classifier;
};

TEST_F(ServerEvents, BothEventIdsDeliverEveryEpoch) {
  for (const IID& id : {server::eventInterfaceId, server::earlierEventInterfaceId}) {
    Sink sink(id);
    const Connection connection(classifier.get(), id, sink);
    ASSERT_EQ(connection.result(), S_OK);
    EXPECT_EQ(classifier->Run(), S_OK);
    ASSERT_EQ(sink.events.size(), 10U);
    EXPECT_EQ(sink.lastId, 1);
    EXPECT_EQ(sink.events.front(), (Sink::Event{1, (1.0 - 1.0 / 10.0) * 0.5, 2}));
    EXPECT_EQ(sink.events.back(), (Sink::Event{10, 0.0, 0}));
  }
}

TEST_F(ServerEvents, APlainLateBoundSinkIsTaken) {
  Sink sink;
  const Connection connection(classifier.get(), server::eventInterfaceId, sink);
  ASSERT_EQ(connection.result(), S_OK);
  classifier->Run();
  EXPECT_EQ(sink.argumentTypes, (std::vector<VARTYPE>{VT_BYREF | VT_I4, VT_BYREF | VT_R8, VT_BYREF | VT_I4}));
}

TEST_F(ServerEvents, ASinkThatWritesTheEpochMovesTheLoop) {
  Sink sink;
  sink.action = [](LONG& epoch, double& rate, LONG& radius) {
    rate = 99.0;  // These two are copies.
    radius = 99;
    if (epoch == 2) epoch = 7;
    return S_OK;
  };
  const Connection connection(classifier.get(), server::eventInterfaceId, sink);
  classifier->Run();
  std::vector<LONG> epochs;
  for (const Sink::Event& event : sink.events) epochs.push_back(event.epoch);
  EXPECT_EQ(epochs, (std::vector<LONG>{1, 2, 8, 9, 10}));
  EXPECT_EQ(sink.events[2].rate, (1.0 - 8.0 / 10.0) * 0.5);
}

TEST_F(ServerEvents, ASinkThatSetsTheLastEpochEndsTheTraining) {
  Sink sink;
  sink.action = [](LONG& epoch, double&, LONG&) {
    epoch = 10;
    return S_OK;
  };
  const Connection connection(classifier.get(), server::earlierEventInterfaceId, sink);
  classifier->Run();
  EXPECT_EQ(sink.events.size(), 1U);
  EXPECT_NE(outputsOf(classifier.get()).elements, std::vector<LONG>(5, 0));
}

TEST_F(ServerEvents, StopLearningInASinkLeavesThatManyEventsAndResults) {
  Sink sink;
  sink.action = [&](LONG& epoch, double&, LONG&) { return epoch == 3 ? classifier->StopLearning() : S_OK; };
  const Connection connection(classifier.get(), server::eventInterfaceId, sink);
  EXPECT_EQ(classifier->Run(), S_OK);
  EXPECT_EQ(sink.events.size(), 3U);
  for (const LONG cluster : outputsOf(classifier.get()).elements) EXPECT_GE(cluster, 1);
}

TEST_F(ServerEvents, SinksOfBothIdsAreCalledAndSeeEachOthersWrites) {
  Sink first;
  Sink second;
  first.action = [](LONG& epoch, double&, LONG&) {
    if (epoch == 1) epoch = 9;
    return S_OK;
  };
  const Connection one(classifier.get(), server::eventInterfaceId, first);
  const Connection other(classifier.get(), server::earlierEventInterfaceId, second);
  classifier->Run();
  ASSERT_EQ(first.events.size(), 2U);
  ASSERT_EQ(second.events.size(), 2U);
  EXPECT_EQ(second.events.front().epoch, 9);
}

TEST_F(ServerEvents, AFailingSinkIsPassedOver) {
  Sink failing;
  Sink good;
  failing.action = [](LONG&, double&, LONG&) { return E_FAIL; };
  const Connection one(classifier.get(), server::eventInterfaceId, failing);
  const Connection other(classifier.get(), server::eventInterfaceId, good);
  EXPECT_EQ(classifier->Run(), S_OK);
  EXPECT_EQ(failing.events.size(), 10U);
  EXPECT_EQ(good.events.size(), 10U);
}

TEST_F(ServerEvents, ASinkMayDisconnectItselfWhileItIsCalled) {
  Sink sink;
  Connection connection(classifier.get(), server::eventInterfaceId, sink);
  sink.action = [&](LONG&, double&, LONG&) { return connection.disconnect(); };
  EXPECT_EQ(classifier->Run(), S_OK);
  EXPECT_EQ(sink.events.size(), 1U);
  EXPECT_EQ(sink.references, 1U);
}

TEST_F(ServerEvents, DisconnectingGivesTheReferenceBack) {
  Sink sink;
  Connection connection(classifier.get(), server::eventInterfaceId, sink);
  EXPECT_EQ(sink.references, 2U);
  classifier->Run();
  EXPECT_EQ(sink.references, 2U);
  EXPECT_EQ(connection.disconnect(), S_OK);
  EXPECT_EQ(sink.references, 1U);
  const std::size_t before = sink.events.size();
  classifier->Run();
  EXPECT_EQ(sink.events.size(), before);
}

TEST_F(ServerEvents, AnObjectThatGoesLetsItsSinksGo) {
  Sink sink;
  {
    const ComPtr<_Classifier3> object = newClassifier();
    ComPtr<IConnectionPointContainer> container;
    ASSERT_EQ(object->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(container.GetAddressOf())),
              S_OK);
    ComPtr<IConnectionPoint> point;
    ASSERT_EQ(container->FindConnectionPoint(server::eventInterfaceId, &point), S_OK);
    DWORD cookie = 0;
    ASSERT_EQ(point->Advise(&sink, &cookie), S_OK);
    EXPECT_EQ(sink.references, 2U);
    object->UnloadfrmMain();
  }
  EXPECT_EQ(sink.references, 1U);
}

TEST_F(ServerEvents, PointsAreListedAndUnknownOnesRefused) {
  ComPtr<IConnectionPointContainer> container;
  ASSERT_EQ(
      classifier->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(container.GetAddressOf())),
      S_OK);
  ComPtr<IEnumConnectionPoints> points;
  ASSERT_EQ(container->EnumConnectionPoints(&points), S_OK);
  std::vector<IID> found;
  ComPtr<IConnectionPoint> point;
  while (points->Next(1, &point, nullptr) == S_OK) {
    IID id{};
    point->GetConnectionInterface(&id);
    found.push_back(id);
    ComPtr<IConnectionPointContainer> back;
    EXPECT_EQ(point->GetConnectionPointContainer(&back), S_OK);
    EXPECT_EQ(back.Get(), container.Get());
  }
  ASSERT_EQ(found.size(), 2U);
  EXPECT_TRUE(found[0] == server::eventInterfaceId && found[1] == server::earlierEventInterfaceId);
  EXPECT_EQ(container->FindConnectionPoint(IID_IDispatch, &point), CONNECT_E_NOCONNECTION);
  ASSERT_EQ(container->FindConnectionPoint(server::eventInterfaceId, &point), S_OK);
  EXPECT_EQ(point->Unadvise(77), CONNECT_E_NOCONNECTION);
  DWORD cookie = 0;
  EXPECT_EQ(point->Advise(nullptr, &cookie), E_POINTER);
}

}  // namespace
}  // namespace mervane::tests
