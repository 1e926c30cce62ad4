-- The document commands end to end, as a script uses them: load markup, find
-- elements, read them, walk the tree, and the errors a script can meet.
package.path = arg[0]:match("(.-)[^/]*$") .. "?.lua;" .. package.path
local check = require("check")

local function tags(handles)
  local names = {}
  for i, handle in ipairs(handles) do names[i] = wvgettagname(handle) end
  return names
end

-- Loading: the first handle is 1, a new load starts the numbers again.
check.eq(wvparse('<p id="a">x</p>'), 0, "wvparse result")
check.eq(wvgetelementbyid(0, "a"), 1, "first handle")
check.eq(wvgetelementbyid(0, "a"), 2, "a second handle for the same node")
check.eq(wvgetelementbyid(0, "missing"), -1, "a miss")
check.eq(wvgetelementbyid(0, "a"), 3, "a miss issues nothing")
check.eq(wvparse('<p id="a">y</p>'), 0, "second wvparse")
check.eq(wvgetelementbyid(0, "a"), 1, "handles start again")
check.eq(wvgetinnertext(1), "y", "the handle names the new tree")
check.eq(wvparse(""), 0, "empty markup")
check.eq(wvgetinnertext(0), "", "empty document text")
check.eq(wvgetouterhtml(0), "", "empty document markup")

-- Reading one element.
wvparse('<div id="d" class="x  y x" title="T">a<b>x</b>c<i>y</i>d</div><p>hello</p><A href="#">t</A>')
local div = wvgetelementbyid(0, "d")
check.eq(wvgetinnerhtml(div), "<b>x</b>c<i>y</i>", "inner markup runs from tag to tag")
check.eq(wvgetinnertext(div), "axcyd", "inner text")
check.eq(wvgetclasses(div), {"x", "y", "x"}, "classes in source order, repeats kept")
check.eq(wvgetattribute(div, "title"), "T", "attribute")
check.eq(wvgetattribute(div, "nope"), "", "absent attribute")
local attributes = wvgetattributes(div)
check.eq(attributes, {class = "x  y x", id = "d", title = "T"}, "attributes")
check.eq(check.pairs_in_order(attributes), {"class=x  y x", "id=d", "title=T"},
         "attributes come in key order")
local p = wvgetelementsbytagname(0, "p")[1]
check.eq(wvgetinnerhtml(p), "", "text without an inner tag gives empty markup")
check.eq(tags(wvgetelementsbytagname(0, "A")), {"A"}, "tag names compare exactly")
check.eq(wvsetinnertext(p, "changed"), p, "wvsetinnertext gives the handle back")
check.eq(wvgetinnertext(p), "hello", "and changes nothing")

-- Reserved handles: 0 is the root for some commands, -1 never an element.
check.eq(wvgetinnertext(-1), -1, "inner text of -1")
check.eq(wvgettagname(0), -1, "tag name of the root by 0")
check.eq(wvgetattribute(0, "id"), "", "attribute of 0")
check.eq(wvgetattributes(-1), {}, "attributes of -1: an empty map")
check.eq(wvgetclasses(0), {}, "classes of 0")
check.eq(wvgetchildren(0), -1, "children of 0")
check.eq(wvgetelementsbytagname(-1, "b"), {}, "search from -1")

-- Collections, filters, count and start.
wvparse('<div id="d"><p class="x">a</p>t<b class="x y">b</b><P class="x">c</P></div>')
check.eq(tags(wvgetelementsbyclass(0, "x")), {"p", "b", "P"}, "by class")
check.eq(tags(wvgetelementsbyclass(0, "x", "p")), {"p"}, "tag filter is exact")
check.eq(wvgetelementsbyclass(0, "x", "i"), {}, "filter that keeps none")
check.eq(wvgettagname(wvgetelementsbyclass(0, "x", "", 1, 2)), "b", "count 1 gives a handle")
check.eq(wvgetelementsbyclass(0, "x", "", 1, 4), -1, "count 1 beyond the list")
check.eq(tags(wvgetelementsbyclass(0, "x", "", 2, 2)), {"b", "P"}, "count and start")
check.eq(tags(wvgetelementsbyclass(0, "x y")), {"b"}, "every class of the list")
check.eq(#wvgetelementsbyclass(0, ""), 8, "empty class list: every node")
div = wvgetelementbyid(0, "d")
check.eq(tags(wvgetchildren(div)), {"p", "plain", "b", "P"}, "children")
check.eq(tags(wvgetchildren(div, "P")), {"p", "P"}, "children filter ignores case")
-- A list command registers before it filters.
local before = wvgetelementbyid(0, "d")
wvgetelementsbyclass(0, "x", "i")
check.eq(wvgetelementbyid(0, "d"), before + 4, "filtered-out matches keep their handles")
wvclear()
check.eq(wvgetelementbyid(0, "d"), 1, "wvclear starts the handles again")

-- Links, images and the pattern language.
wvparse('<div><a href=" /x.html ">One</a><a href="/y.html?a=1&amp;b=2">Two &amp; Three</a>' ..
        '<a>None</a><img src="p.png"><A href="/z">Up</A></div>')
local function hrefs(handles)
  local texts = {}
  for i, handle in ipairs(handles) do texts[i] = wvgetinnertext(handle) end
  return texts
end
check.eq(hrefs(wvgetlinksbyhref(0, "/x.html")), {"One"}, "value is trimmed")
check.eq(hrefs(wvgetlinksbyhref(0, "/y.html?a=1&b=2")), {"Two &amp; Three"}, "decoded match")
check.eq(hrefs(wvgetlinksbyhref(0, "*=2")), {"Two &amp; Three"}, "ends with")
check.eq(hrefs(wvgetlinksbyhref(0, "*&b=2")), {}, "a star search does not decode")
check.eq(hrefs(wvgetlinksbyhref(0, "/*")), {"One", "Two &amp; Three"}, "starts with")
check.eq(#wvgetlinksbyhref(0, "*"), 3, "star: every a")
check.eq(hrefs(wvgetlinksbyhref(0, "", 0)), {"None"}, "empty pattern, flag off")
check.eq(hrefs(wvgetlinksbytext(0, "Two & Three")), {"Two &amp; Three"}, "by text")
check.eq(#wvgetimagesbysrc(0, "*.png"), 1, "image by source")
check.eq(#wvgetelementsbyattribute(0, "a", "href"), 3, "no pattern: every a")
check.eq(hrefs(wvgetelementsbyattribute(0, "A", "href", "/z")), {"Up"}, "by attribute")

-- Walking the tree.
wvparse("<div><b>x</b> <i>y</i></div>")
local b = wvgetelementsbytagname(0, "b")[1]
local space = wvgetsiblingnext(b)
check.eq(wvgettagname(space), "plain", "the next sibling is the text node")
check.eq(wvgettagname(wvgetsiblingnext(space)), "i", "then the i")
check.eq(wvgetsiblingnext(wvgetsiblingnext(space)), -1, "then nothing")
check.eq(wvgetsiblingprev(b), -1, "first child has no previous sibling")
local parent1, parent2 = wvgetparent(b), wvgetparent(b)
check.truthy(parent1 ~= parent2, "each step issues a new handle")
local root = wvgetparent(parent1)
check.eq(wvgettagname(root), "", "the root by a handle has an empty name")
check.eq(tags(wvgetchildren(root)), {"div"}, "children of the root by a handle")
check.eq(wvgetparent(root), -1, "the root has no parent")

-- Calls that break a row never reach the module.
check.raises("wvgetinnertext takes 1 to 2 arguments, got 0", wvgetinnertext)
check.raises("wvclear takes 0 arguments, got 1", wvclear, 1)
check.raises("bad argument #1 to 'wvparse' (string expected, got number)", wvparse, 5)
check.raises("bad argument #1 to 'wvgettagname' (integer expected, got string)", wvgettagname, "1")

-- Host services that fail: the module reports, the script gets an error.
lantern.failservices{arrhandler = {at = 1, status = -2}}
check.raises("DllArrHandler -2", wvgetchildren, wvgetparent(b))
lantern.failservices{arrayservices = 7}
check.raises("DllArrayServices 7", wvgetclasses, b)
lantern.failservices{mapcreate = 5}
check.raises("DllMapServices 5", wvgetattributes, b)
lantern.failservices()
check.eq(tags(wvgetelementsbytagname(0, "b")), {"b"}, "services work again")

check.eq(lantern.faults(), {}, "no contract faults")
print("document_commands: ok")
