// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/AutoreleaseScope.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>

#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;

TEST(AutoreleaseScope, KeepsWhatWasAutoreleasedUntilItEnds) {
  Node* borrowed = nullptr;
  {
    const AutoreleaseScope scope;
    borrowed = autorelease(make<Node>());
    EXPECT_TRUE(borrowed->next == nullptr && Node::alive == 1);
  }
  EXPECT_EQ(Node::alive, 0);
}

TEST(AutoreleaseScope, InnerScopesEndBeforeOuterOnes) {
  const AutoreleaseScope outer;
  autorelease(make<Node>());
  {
    const AutoreleaseScope inner;
    autorelease(make<Node>());
    autorelease(make<Node>());
    EXPECT_EQ(Node::alive, 3);
  }
  EXPECT_EQ(Node::alive, 1);
}

TEST(AutoreleaseScope, LetsGoTheLastFirst) {
  std::string order;
  {
    const AutoreleaseScope scope;
    for (const char letter : {'a', 'b', 'c'}) autorelease(make<Farewell>([&order, letter] { order += letter; }));
  }
  EXPECT_EQ(order, "cba");
}

TEST(AutoreleaseScope, TakesANullReferenceAndAnObjectTwice) {
  {
    const AutoreleaseScope scope;
    EXPECT_EQ(autorelease(Ref<Node>()), nullptr);
    const Ref<Node> node = make<Node>();
    autorelease(node);
    autorelease(node);
  }
  EXPECT_EQ(Node::alive, 0);
}

TEST(AutoreleaseScope, AlsoEndsWhatIsAutoreleasedWhileItEnds) {
  {
    const AutoreleaseScope scope;
    autorelease(make<Farewell>([] {
      autorelease(make<Farewell>([] { autorelease(make<Node>()); }));
      EXPECT_EQ(Node::alive, 0);
    }));
  }
  EXPECT_EQ(Node::alive, 0);
}

TEST(AutoreleaseScope, EndsWhenAnExceptionLeavesIt) {
  EXPECT_THROW(
      {
        const AutoreleaseScope scope;
        autorelease(make<Node>());
        throw std::runtime_error("out");
      },
      std::runtime_error);
  EXPECT_EQ(Node::alive, 0);
}

TEST(AutoreleaseScope, WithNoneOpenTheObjectLivesUntilItsThreadEnds) {
  std::thread([] {
    autorelease(make<Node>());
    { const AutoreleaseScope scope; }
    EXPECT_EQ(Node::alive, 1);
  }).join();
  EXPECT_EQ(Node::alive, 0);
}

TEST(AutoreleaseScope, BelongsToItsThread) {
  std::optional<AutoreleaseScope> scope(std::in_place);
  autorelease(make<Node>());
  std::thread([] {
    const AutoreleaseScope other;
    autorelease(make<Node>());
  }).join();
  EXPECT_EQ(Node::alive, 1);
  scope.reset();
  EXPECT_EQ(Node::alive, 0);
}

TEST(AutoreleaseScope, WorksWhileTheThreadsOwnObjectsGo) {
  struct Late {
    ~Late() { autorelease(make<Node>()); }
  };
  std::thread([] {
    thread_local const Late late;
    static_cast<void>(&late);
    EXPECT_EQ(Node::alive, 0);
  }).join();
  EXPECT_EQ(Node::alive, 0);
}

TEST(AutoreleaseScope, WorksInTheLastDestructorsOfAThread) {
  static pthread_key_t key;
  pthread_key_create(&key, [](void*) {
    const AutoreleaseScope scope;
    autorelease(make<Node>());
  });
  std::thread([] {
    pthread_setspecific(key, &key);
    autorelease(make<Node>());
  }).join();
  pthread_key_delete(key);
  EXPECT_EQ(Node::alive, 0);
}

TEST(AutoreleaseScope, AtAThreadsEndAutoreleasesAsDeepAsItGoes) {
  static int deaths = 0;
  static std::function<void(int)> hang = [](int depth) {
    autorelease(make<Farewell>([depth] {
      ++deaths;
      if (depth) hang(depth - 1);
    }));
  };
  std::thread([] { hang(20); }).join();
  EXPECT_EQ(deaths, 21);
}
