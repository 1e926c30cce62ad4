// A million nested elements, handled on a thread whose stack is 1 MiB: every
// operation of the engine must work without recursion along the depth. The
// nested elements are closed only by the end tag of the outermost, so the
// parser also looks for an open ancestor by name a million levels deep.
#include <gtest/gtest.h>
#include <pthread.h>

#include <algorithm>
#include <string>

#include "tests/html/parse_helpers.h"

namespace qrl::testing {
namespace {

constexpr int kDepth = 1'000'000;

TEST(DepthTest, ParsesWritesSearchesAndReleasesWithoutRecursion) {
  const auto run = [](void*) -> void* {
    std::string opened, closed;
    for (int i = 0; i < kDepth; ++i) opened += "<d>", closed += "</d>";
    const std::string innermost = "<b id=\"z\">x</b><i></i>";
    ParseOutcome outcome = ParseCapturingWarnings("<a>" + opened + innermost + "</a>");
    EXPECT_EQ(std::count(outcome.warnings.begin(), outcome.warnings.end(), '\n'), kDepth);
    ElementRef root = outcome.document->root;
    outcome.document.reset();
    EXPECT_EQ(root->GetText(), "x");
    EXPECT_TRUE(MarkupOf(*root) == "<a>" + opened + innermost + closed + "</a>");  // not printed: megabytes
    EXPECT_TRUE(root->GetElementById("z"));
    ElementList chain = root->GetElementsByTagName("d");
    EXPECT_EQ(chain.size(), static_cast<std::size_t>(kDepth));

    // A node held from the middle keeps its tree, ancestors included, then
    // the tree goes with it.
    ElementRef middle = chain[kDepth / 2];
    const std::weak_ptr<HtmlElement> watch = middle;
    chain.clear();
    root.reset();
    EXPECT_EQ(middle->GetParent()->GetParent()->name(), "d");
    EXPECT_EQ(middle->GetText(), "x");
    middle.reset();
    EXPECT_TRUE(watch.expired());
    return nullptr;
  };
  pthread_attr_t attributes;
  ASSERT_EQ(pthread_attr_init(&attributes), 0);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, 1 << 20), 0);
  pthread_t thread;
  ASSERT_EQ(pthread_create(&thread, &attributes, run, nullptr), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

}  // namespace
}  // namespace qrl::testing
