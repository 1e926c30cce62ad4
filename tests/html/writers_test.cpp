#include <gtest/gtest.h>

#include <string>

#include "tests/html/parse_helpers.h"

namespace qrl::testing {
namespace {

struct WriterCase {
  std::string source;
  std::string text;
  std::string markup;  // "=" stands for the source itself
};

class WritersTest : public ::testing::TestWithParam<WriterCase> {};

TEST_P(WritersTest, WriteTextAndMarkupOfRoot) {
  const WriterCase& c = GetParam();
  const DocumentRef document = ParseQuietly(c.source);
  EXPECT_EQ(document->root->GetText(), c.text);
  std::string markup = "prefix:";
  document->root->AppendMarkup(markup);
  EXPECT_EQ(markup, "prefix:" + (c.markup == "=" ? c.source : c.markup));
}

INSTANTIATE_TEST_SUITE_P(
    Cases, WritersTest,
    ::testing::Values(
        WriterCase{"<p>a<br>b</p>", "a\nb", "<p>a<br></br>b</p>"},
        WriterCase{"<p>a</p> <p>b</p>", "a\nb", "<p>a</p><p>b</p>"},
        WriterCase{"<tr><td>1</td><td>2</td></tr><tr><td>3</td></tr>", "1\t2\n3", "="},
        WriterCase{"<ul><li>a</li><li>b</li></ul>", "ab", "="},
        WriterCase{"<div>a<div>b</div>c</div>", "a\nbc", "="},
        WriterCase{"<div> <p>x</p> </div>", " \nx ", "="},
        WriterCase{"<html><head><title>t</title></head><body>x<script>y</script>z</body></html>", "xz", "="},
        WriterCase{"<a z=1 B=2 c>t</a>", "t", "<a B=\"2\" c=\"\" z=\"1\">t</a>"},
        WriterCase{"<a title='say \"hi\"'>t</a>", "t", "<a title=\"say \"hi\"\">t</a>"},
        WriterCase{"<style>  p{}  </style>", "", "<style>p{}</style>"},
        WriterCase{"<noscript>x</noscript>", "", "="},
        WriterCase{"<p>&lt;</p>", "&lt;", "="},
        WriterCase{"<plain>x</plain>", "", ""},
        WriterCase{"no elements", "", ""},
        WriterCase{"<x>a<h1>b</h1><h7>c</h7><h8>d</h8><hr><area><td>e</td><P>f</P></x>", "a\nb\ncd\n\n\tef", "<x>a<h1>b</h1><h7>c</h7><h8>d</h8><hr></hr><area></area><td>e</td><P>f</P></x>"},
        WriterCase{"<x><head>h</head><meta><link><p>p</p></x>", "\np",
                   "<x><head>h</head><meta></meta><link></link><p>p</p></x>"},
        WriterCase{"<div><>a</>b</div>", "ab", "<div>ab</div>"}));

TEST(WritersTest, WriteFromAnyElementWithTheSameRules) {
  const DocumentRef document = ParseQuietly("<x><script>s</script><p>a</p><td>b</td></x>");
  const HtmlElement& x = *document->root->children[0];
  EXPECT_EQ(x.children[0]->GetText(), "");
  std::string out = "t:";
  x.AppendText(out);
  EXPECT_EQ(out, "t:\na\tb");
  std::string markup;
  x.children[1]->AppendMarkup(markup);
  EXPECT_EQ(markup, "<p>a</p>");
}

}  // namespace
}  // namespace qrl::testing
