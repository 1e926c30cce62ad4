#include <gtest/gtest.h>

#include <string>

#include "tests/html/parse_helpers.h"

namespace qrl::testing {
namespace {

TEST(WritersTest, WriteTextAndMarkupAfterWhatIsAlreadyThere) {
  const struct {
    std::string source, text;
    std::string markup;  // "=" stands for the source itself
  } cases[] = {
      {"<p>a<br>b</p>", "a\nb", "<p>a<br></br>b</p>"},
      {"<tr><td>1</td><td>2</td></tr><tr><td>3</td></tr>", "1\t2\n3", "="},
      {"<div>a<div>b</div>c</div>", "a\nbc", "="},
      {"<x><script>s</script><p>a</p><td>b</td></x>", "\na\tb", "="},
      {"<a z=1 B=2 c>t</a>", "t", "<a B=\"2\" c=\"\" z=\"1\">t</a>"},
      {"<style>  p{}  </style>", "", "<style>p{}</style>"},
      {"<noscript>x</noscript>", "", "="},
      {"<x>a<h1>b</h1><h7>c</h7><h8>d</h8><hr><area><td>e</td><P>f</P></x>", "a\nb\ncd\n\n\tef",
       "<x>a<h1>b</h1><h7>c</h7><h8>d</h8><hr></hr><area></area><td>e</td><P>f</P></x>"},
      {"<x><head>h</head><meta><link><p>p</p></x>", "\np", "<x><head>h</head><meta></meta><link></link><p>p</p></x>"},
      {"<div><>a</>b</div>", "ab", "<div>ab</div>"},
  };
  for (const auto& c : cases) {
    const DocumentRef document = ParseQuietly(c.source);
    std::string text = "t:", markup = "m:";
    document->root->AppendText(text);
    document->root->AppendMarkup(markup);
    EXPECT_EQ(text, "t:" + c.text) << c.source;
    EXPECT_EQ(markup, "m:" + (c.markup == "=" ? c.source : c.markup)) << c.source;
  }
}

}  // namespace
}  // namespace qrl::testing
