#include "TopLevelDomains.h"

#include <algorithm>
#include <array>

namespace platform {

namespace {

// Both sorted by bytes. All country domains and the general ones that hosts in everyday texts end with.
// Chosen by hand: the public suffix list has 600 more, most of them everyday words and brands ("open",
// "call", "here"), which would turn "see you.here" into a link.
// clang-format off
constexpr auto knownDomains = std::to_array<std::string_view>({
    "ac", "academy", "accountant", "accountants", "actor", "ad", "ae", "aero", "af", "ag", "agency", "ai",
    "airforce", "al", "ao", "apartments", "app", "aq", "ar", "arpa", "art", "asia", "associates", "at",
    "attorney", "au", "auction", "audio", "auto", "autos", "aw", "ax", "az", "ba", "baby", "band", "bank",
    "bar", "bargains", "bb", "bd", "be", "beauty", "beer", "berlin", "bet", "bf", "bg", "bh", "bi", "bike",
    "bio", "biz", "bj", "black", "blog", "blue", "bm", "bn", "bo", "boats", "boo", "boutique", "br",
    "brussels", "bs", "bt", "build", "builders", "business", "buzz", "bw", "by", "bz", "bzh", "ca", "cab",
    "cafe", "camera", "camp", "capital", "cards", "care", "career", "careers", "cars", "casa", "cash",
    "casino", "cat", "catering", "cd", "center", "ceo", "cf", "cg", "ch", "channel", "charity", "chat",
    "cheap", "christmas", "church", "ci", "city", "ck", "cl", "claims", "cleaning", "click", "clinic",
    "clothing", "cloud", "club", "cm", "cn", "co", "coach", "codes", "coffee", "college", "cologne", "com",
    "community", "company", "computer", "condos", "construction", "consulting", "contact", "contractors",
    "cooking", "cool", "coop", "country", "coupons", "courses", "cr", "credit", "creditcard", "cricket",
    "cruises", "cu", "cv", "cw", "cx", "cy", "cymru", "cz", "dance", "dating", "de", "deals", "degree",
    "delivery", "democrat", "dental", "dentist", "design", "dev", "diamonds", "diet", "digital", "direct",
    "directory", "discount", "dj", "dk", "dm", "doctor", "dog", "domains", "download", "dz", "earth", "ec",
    "eco", "edu", "education", "ee", "eg", "email", "energy", "engineer", "engineering", "enterprises",
    "equipment", "er", "es", "esq", "estate", "et", "eu", "eus", "events", "exchange", "expert", "exposed",
    "express", "fail", "faith", "family", "fan", "fans", "farm", "fashion", "feedback", "fi", "film",
    "finance", "financial", "fish", "fishing", "fit", "fitness", "fj", "fk", "flights", "florist",
    "flowers", "fm", "fo", "football", "forsale", "forum", "foundation", "fr", "frl", "fun", "fund",
    "furniture", "futbol", "fyi", "ga", "gallery", "game", "games", "garden", "gay", "gd", "gdn", "ge",
    "gent", "gf", "gg", "gh", "gi", "gift", "gifts", "gives", "gl", "glass", "global", "gm", "gmbh", "gn",
    "gold", "golf", "google", "gov", "gp", "gq", "gr", "graphics", "gratis", "green", "gripe", "group",
    "gs", "gt", "gu", "guide", "guitars", "guru", "gw", "gy", "hair", "hamburg", "haus", "health",
    "healthcare", "help", "hiphop", "hiv", "hk", "hm", "hn", "hockey", "holdings", "holiday", "homes",
    "horse", "hospital", "host", "hosting", "house", "hr", "ht", "hu", "icu", "id", "ie", "il", "im",
    "immo", "immobilien", "in", "inc", "industries", "info", "ink", "institute", "insure", "int",
    "international", "investments", "io", "iq", "ir", "irish", "is", "istanbul", "it", "je", "jewelry",
    "jm", "jo", "jobs", "jp", "juegos", "kaufen", "ke", "kg", "kh", "ki", "kim", "kitchen", "kiwi", "km",
    "kn", "koeln", "kp", "kr", "krd", "kw", "ky", "kz", "la", "land", "lat", "law", "lawyer", "lb", "lc",
    "lease", "legal", "lgbt", "li", "life", "lighting", "limited", "limo", "link", "live", "lk", "llc",
    "loan", "loans", "lol", "london", "lr", "ls", "lt", "ltd", "ltda", "lu", "luxury", "lv", "ly", "ma",
    "madrid", "maison", "makeup", "management", "market", "marketing", "mba", "mc", "me", "media",
    "melbourne", "meme", "memorial", "men", "menu", "mg", "mh", "miami", "microsoft", "mil", "mk", "ml",
    "mm", "mn", "mo", "mobi", "moda", "moe", "money", "monster", "mortgage", "motorcycles", "mp", "mq",
    "mr", "mt", "mu", "museum", "mv", "mw", "mx", "my", "mz", "na", "nagoya", "nc", "ne", "net", "network",
    "news", "nf", "ng", "ngo", "ni", "ninja", "nl", "no", "np", "nr", "nrw", "nu", "nyc", "nz", "okinawa",
    "om", "one", "ong", "online", "ooo", "org", "organic", "osaka", "pa", "page", "paris", "partners",
    "parts", "party", "pe", "pet", "pf", "pg", "ph", "phd", "photo", "photography", "photos", "pics",
    "pictures", "pink", "pizza", "pk", "pl", "place", "plumbing", "plus", "pn", "poker", "porn", "pr",
    "press", "pro", "productions", "prof", "promo", "properties", "property", "pt", "pub", "pw", "qa",
    "qpon", "quebec", "racing", "re", "realtor", "recipes", "red", "rehab", "reise", "reisen", "rent",
    "rentals", "repair", "republican", "restaurant", "review", "reviews", "rich", "rip", "ro", "rocks",
    "rodeo", "rsvp", "ru", "ruhr", "rw", "sa", "saarland", "sale", "salon", "sarl", "sb", "sc", "scot",
    "sd", "se", "services", "sexy", "sg", "shiksha", "shoes", "shop", "shopping", "show", "si", "singles",
    "site", "sk", "ski", "skin", "sl", "sm", "sn", "soccer", "social", "software", "solar", "solutions",
    "space", "sport", "spot", "sr", "srl", "ss", "stockholm", "storage", "store", "stream", "studio",
    "study", "style", "su", "supplies", "supply", "support", "surf", "surgery", "sv", "swiss", "sx", "sy",
    "sydney", "systems", "sz", "taipei", "tattoo", "tax", "taxi", "tc", "td", "team", "tech", "technology",
    "tel", "tennis", "tf", "tg", "th", "theater", "theatre", "tickets", "tienda", "tips", "tires", "tirol",
    "tj", "tk", "tl", "tm", "tn", "to", "tokyo", "tools", "top", "tours", "town", "toys", "tr", "trade",
    "trading", "training", "travel", "tt", "tube", "tv", "tw", "tz", "ua", "ug", "uk", "university", "uno",
    "us", "uy", "uz", "va", "vacations", "vc", "ve", "vegas", "ventures", "versicherung", "vet", "vg", "vi",
    "viajes", "video", "villas", "vin", "vip", "vision", "vlaanderen", "vn", "vodka", "vote", "voting",
    "voyage", "vu", "wales", "wang", "watch", "webcam", "website", "wedding", "wf", "wien", "wiki", "win",
    "wine", "work", "works", "world", "ws", "wtf", "xxx", "xyz", "yachts", "ye", "yoga", "yokohama", "yt",
    "za", "zm", "zone", "zw", "ελ", "ευ", "бг", "бел", "ею", "мкд", "москва", "онлайн", "рус", "рф", "сайт",
    "срб", "укр", "қаз", "ישראל", "קום", "الاردن", "السعودية", "المغرب", "امارات", "ایران", "دبي", "شبكة",
    "مصر", "موقع", "भारत", "ভারত", "ไทย", "გე", "みんな", "コム", "世界", "中国", "中國", "中文网", "公司", "台湾", "台灣",
    "商城", "在线", "新加坡", "澳門", "网址", "网络", "香港", "한국"});

constexpr auto ambiguousDomains = std::to_array<std::string_view>({
    "am", "as", "best", "cc", "dad", "date", "day", "do", "foo", "love", "md", "mov", "ms", "name", "new",
    "pm", "post", "ps", "py", "report", "rest", "rs", "run", "sh", "so", "st", "today", "you", "zip"});
// clang-format on

static_assert(std::ranges::is_sorted(knownDomains) && std::ranges::is_sorted(ambiguousDomains));

}  // namespace

TopLevelDomain topLevelDomain(std::string_view label) {
    if (std::ranges::binary_search(knownDomains, label)) return TopLevelDomain::known;
    if (std::ranges::binary_search(ambiguousDomains, label)) return TopLevelDomain::ambiguous;
    if (label.size() > 4 && label.starts_with("xn--")) return TopLevelDomain::known;
    return TopLevelDomain::unknown;
}

}  // namespace platform
