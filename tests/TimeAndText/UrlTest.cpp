#include <TimeAndText/Url.h>

#include <gtest/gtest.h>

namespace platform {
namespace {

std::string shown(const std::optional<std::string>& text) {
    return text ? *text : "(none)";
}

TEST(Url, EncodesInvalidCharactersAndLeavesTheRest) {
    const char* const cases[][2] = {
        // null: no URL
        {"https://us02.Example.com:443/j/123%20a?pwd=a%26b&x=1#f%C3%A9",
         "https://us02.Example.com:443/j/123%20a?pwd=a%26b&x=1#f%C3%A9"},
        {"https://example.com/a b/é?q=ü x#ö", "https://example.com/a%20b/%C3%A9?q=%C3%BC%20x#%C3%B6"},
        {"https://example.com/100%/%zz/%4", "https://example.com/100%25/%25zz/%254"},
        {"https://example.com/a[1]?b[2]=c#d#e", "https://example.com/a%5B1%5D?b%5B2%5D=c#d%23e"},
        {"https://me@home@example.com/", "https://me%40home@example.com/"},
        {"http://[2001:db8::1]:8080/x", "http://[2001:db8::1]:8080/x"},
        {"mailto:jane@example.com?subject=a b", "mailto:jane@example.com?subject=a%20b"},
        {"zoom.example/j/1", "zoom.example/j/1"},
        {"heedbanner://joinCall", "heedbanner://joinCall"},
        {"HTTPS:", "HTTPS:"},
        {"line\nbreak", "line%0Abreak"},
        {"", nullptr},
        {"1http://example.com", nullptr},
        {":no-scheme", nullptr},
        {"ht tp://example.com", nullptr},
        {"http://[::1/", nullptr},
        {"http://::1]/", nullptr},
        {"http://[::1]x/", nullptr},
        {"http://[/]", nullptr},
        {"http://example.com:port/", nullptr},
        {"http://example.com:65536/", nullptr},
        {"http://example.com:-1/", nullptr},
    };
    for (const auto& [text, expected] : cases) {
        const auto url = Url::parse(text);
        EXPECT_EQ(url ? url->absoluteString() : "(none)", expected ? expected : "(none)") << text;
        if (url) {
            EXPECT_EQ(Url::parse(url->absoluteString()), url) << "made again from its own text";
        }
    }
}

TEST(Url, TakesItselfApart) {
    const char* const none = "(none)";
    const std::tuple<const char*, const char*, const char*, const char*, int, const char*, const char*,
                     const char*, const char*, const char*>
        cases[] = {
            // port 0: none
            {"https://jo%20e:pw@Example.com:8443/a%20b/c%2Fd/?x=%31#top", "https", "jo e", "Example.com",
             8443, "/a b/c/d/", "c/d", "x=%31", "top", "//jo%20e:pw@Example.com:8443/a%20b/c%2Fd/?x=%31#top"},
            {"mailto:jane@example.com", "mailto", none, none, 0, "jane@example.com", "jane@example.com", none,
             none, "jane@example.com"},
            {"heedbanner://preview", "heedbanner", none, "preview", 0, "", "", none, none, "//preview"},
            {"file:///etc/hosts", "file", none, none, 0, "/etc/hosts", "hosts", none, none, "///etc/hosts"},
            {"http://[::1]:80?", "http", none, "::1", 80, "", "", "", none, "//[::1]:80?"},
            {"//host:/x", none, none, "host", 0, "/x", "x", none, none, none},
            {"https://h/%FF", "https", none, "h", 0, "/%FF", "%FF", none, none, "//h/%FF"},
            {"a?b#c?d/e", none, none, none, 0, "a", "a", "b", "c?d/e", none},
        };
    for (const auto& [text, scheme, user, host, port, path, last, query, fragment, specifier] : cases) {
        const Url url = Url::parse(text).value();
        EXPECT_EQ(shown(url.scheme()), scheme) << text;
        EXPECT_EQ(shown(url.user()), user) << text;
        EXPECT_EQ(shown(url.host()), host) << text;
        EXPECT_EQ(url.port().value_or(0), port) << text;
        EXPECT_EQ(url.path(), path) << text;
        EXPECT_EQ(url.lastPathComponent(), last) << text;
        EXPECT_EQ(shown(url.query()), query) << text;
        EXPECT_EQ(shown(url.fragment()), fragment) << text;
        EXPECT_EQ(shown(url.resourceSpecifier()), specifier) << text;
    }
}

TEST(Url, QueryItemsAreDecodedOnceAndTheFirstOfANameIsUsed) {
    const Url url = Url::parse("https://h/?q=https%253A%252F%252Fx&Q=2&q=3&a+b=c+d&flag&e==&=v").value();
    EXPECT_EQ(url.queryValue("q"), "https%3A%2F%2Fx");
    EXPECT_EQ(url.queryValue("a+b"), "c+d");
    EXPECT_EQ(url.queryValue("e"), "=");
    EXPECT_EQ(url.queryValue("flag"), std::nullopt);
    EXPECT_EQ(url.queryValue("missing"), std::nullopt);
    EXPECT_EQ(url.queryItems().size(), 7u);
}

TEST(Url, AnAppendedComponentComesBackFromThePath) {
    const Url base = Url::parse("heedbanner://joinCall").value();
    EXPECT_EQ(base.appendingPathComponent("ABC-123").absoluteString(), "heedbanner://joinCall/ABC-123");
    for (const char* id : {"A B", "100%", "%20", "é?#", "a:b@c;d", "[x]", "日本"}) {
        EXPECT_EQ(base.appendingPathComponent(id).path(), "/" + std::string(id));
        EXPECT_EQ(base.appendingPathComponent(id).lastPathComponent(), id);
    }
    EXPECT_EQ(Url::parse("http://h/a/?q#f")->appendingPathComponent("b/c").absoluteString(),
              "http://h/a/b/c?q#f");
}

TEST(PercentEncoding, DecodesOnlyWhatIsWholeAndUtf8) {
    EXPECT_EQ(removingPercentEncoding("a%20%C3%A9+b"), "a é+b");
    for (const char* bad : {"%", "%4", "%zz", "a%2", "%FF", "%C3"}) {
        EXPECT_EQ(removingPercentEncoding(bad), std::nullopt) << bad;
    }
    EXPECT_EQ(percentEncodedForQuery("50% of\nall?"), "50%25%20of%0Aall?");
}

}  // namespace
}  // namespace platform
