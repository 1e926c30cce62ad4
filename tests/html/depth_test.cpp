// A million nested elements, handled on a thread whose stack is 1 MiB: every
// operation of the engine must work without recursion along the depth.
#include <gtest/gtest.h>
#include <pthread.h>

#include <algorithm>
#include <functional>
#include <string>

#include "tests/html/parse_helpers.h"

namespace qrl::testing {
namespace {

constexpr int kDepth = 1'000'000;

void RunOnSmallStack(std::function<void()> work) {
  pthread_attr_t attributes;
  ASSERT_EQ(pthread_attr_init(&attributes), 0);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, 1 << 20), 0);
  pthread_t thread;
  const auto run = [](void* argument) -> void* {
    (*static_cast<std::function<void()>*>(argument))();
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, &attributes, run, &work), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

std::string Repeated(std::string_view piece) {
  std::string out;
  for (int i = 0; i < kDepth; ++i) out.append(piece);
  return out;
}

TEST(DepthTest, ParsesWritesSearchesAndReleasesWithoutRecursion) {
  const std::string innermost = "<b class=\"c\" id=\"z\">x</b><i></i>";
  const std::string closed = Repeated("<d>") + innermost + Repeated("</d>");
  const struct {
    std::string source;
    std::ptrdiff_t warningLines;
    std::string markup;  // empty when nothing of the source may remain
  } cases[] = {
      {closed, 0, closed},
      {Repeated("<d>") + innermost, 0, ""},
      {"<a>" + Repeated("<d>") + innermost + "</a>", kDepth, "<a>" + closed + "</a>"},
  };
  for (const auto& c : cases) {
    RunOnSmallStack([&c] {
      ParseOutcome outcome = ParseCapturingWarnings(c.source);
      EXPECT_EQ(std::count(outcome.warnings.begin(), outcome.warnings.end(), '\n'), c.warningLines);
      ElementRef root = outcome.document->root;
      outcome.document.reset();
      if (c.markup.empty()) {
        EXPECT_TRUE(root->children.empty());
        return;
      }
      EXPECT_EQ(root->GetText(), "x");
      EXPECT_TRUE(MarkupOf(*root) == c.markup);  // not printed: megabytes
      const ElementRef b = root->GetElementById("z");
      ASSERT_TRUE(b);
      EXPECT_EQ(root->GetElementsByClassName("c"), ElementList{b});
      EXPECT_EQ(root->GetElementsByTagName("d").size(), static_cast<std::size_t>(kDepth));
      const ElementRef i = b->GetNextSibling();
      ASSERT_TRUE(i && i->name == "i");
      EXPECT_EQ(i->GetPreviousSibling(), b);

      // A node held from the middle outlives the rest of the tree, then goes too.
      ElementRef middle = root->GetElementsByTagName("d")[kDepth / 2];
      const std::weak_ptr<HtmlElement> watch = middle;
      root.reset();
      EXPECT_TRUE(middle->parent.expired());
      EXPECT_EQ(middle->GetText(), "x");
      middle.reset();
      EXPECT_TRUE(watch.expired());
    });
  }
}

}  // namespace
}  // namespace qrl::testing
