#pragma once

#include <string_view>

// Facts about the letters of the Latin, Greek and Cyrillic alphabets, taken once from the Unicode
// character database 14 and fixed since: stored indexes depend on every line. Do not regenerate.
namespace store::letters {

// Letters with a mark in groups of three: the small letter without the mark, the capital, the small
// one. A letter without a capital stands twice.
struct MarkRow {
  int mark;  // code of the combining mark, or a number below kForms
  std::u16string_view letters;
};

// Forms of a letter that are no letter plus combining mark: numbered for each base letter. They
// come after all combining marks.
inline constexpr int kForms = 6;

inline constexpr MarkRow kMarkRows[] = {
    {0,
     u"aªª oºº dÐð hĦħ iıı lŁł nŊŋ tŦŧ bɃƀ zƵƶ gǤǥ jȷȷ cȻȼ eɆɇ rɌɍ yɎɏ fƑƒ kƘƙ pƤƥ "
     u"sȿȿ qɊɋ vƲʋ ſẜẜ "},
    {1, u"oØø dĐđ jɈɉ iƗɨ aȺⱥ lĿŀ bƂƃ cƇƈ nȠƞ tƫƫ yƳƴ zȤȥ gƓɠ ſẝẝ kĸĸ sſſ "},
    {2, u"dƋƌ lȽƚ tƬƭ nȵȵ zɀɀ bƁɓ aẚẚ yỾỿ "},
    {3, u"dȡȡ lȴȴ tȶȶ nƝɲ "},
    {4, u"dƉɖ tƮʈ nŉŉ "},
    {5, u"dƊɗ tȾⱦ "},
    {0x300,
     u"aÀà eÈè iÌì oÒò uÙù üǛǜ nǸǹ еЀѐ иЍѝ ēḔḕ ōṐṑ wẀẁ âẦầ ăẰằ êỀề ôỒồ ơỜờ ưỪừ "
     u"yỲỳ "},
    {0x301,
     u"aÁá eÉé iÍí oÓó uÚú yÝý cĆć lĹĺ nŃń rŔŕ sŚś zŹź üǗǘ gǴǵ åǺǻ æǼǽ øǾǿ ¨΅΅ "
     u"ϊΐΐ αΆά εΈέ ηΉή ιΊί ϋΰΰ οΌό υΎύ ωΏώ ϒϓϓ гЃѓ кЌќ çḈḉ ēḖḗ ïḮḯ kḰḱ mḾḿ õṌṍ "
     u"ōṒṓ pṔṕ ũṸṹ wẂẃ âẤấ ăẮắ êẾế ôỐố ơỚớ ưỨứ "},
    {0x302, u"aÂâ eÊê iÎî oÔô uÛû cĈĉ gĜĝ hĤĥ jĴĵ sŜŝ wŴŵ yŶŷ zẐẑ ạẬậ ẹỆệ ọỘộ "},
    {0x303, u"aÃã nÑñ oÕõ iĨĩ uŨũ vṼṽ âẪẫ ăẴẵ eẼẽ êỄễ ôỖỗ ơỠỡ ưỮữ yỸỹ "},
    {0x304,
     u"aĀā eĒē iĪī oŌō uŪū üǕǖ äǞǟ ȧǠǡ æǢǣ ǫǬǭ öȪȫ õȬȭ ȯȰȱ yȲȳ иӢӣ уӮӯ gḠḡ ḷḸḹ "
     u"ṛṜṝ "},
    {0x306, u"aĂă eĔĕ gĞğ iĬĭ oŎŏ uŬŭ иЙй уЎў жӁӂ аӐӑ еӖӗ ȩḜḝ ạẶặ "},
    {0x307,
     u"cĊċ eĖė gĠġ iİİ zŻż aȦȧ oȮȯ bḂḃ dḊḋ fḞḟ hḢḣ mṀṁ nṄṅ pṖṗ rṘṙ sṠṡ śṤṥ šṦṧ "
     u"ṣṨṩ tṪṫ wẆẇ xẊẋ yẎẏ ſẛẛ "},
    {0x308,
     u"aÄä eËë iÏï oÖö uÜü yŸÿ ιΪϊ υΫϋ ϒϔϔ еЁё іЇї аӒӓ әӚӛ жӜӝ зӞӟ иӤӥ оӦӧ өӪӫ "
     u"эӬӭ уӰӱ чӴӵ ыӸӹ hḦḧ õṎṏ ūṺṻ wẄẅ xẌẍ tẗẗ "},
    {0x309, u"aẢả âẨẩ ăẲẳ eẺẻ êỂể iỈỉ oỎỏ ôỔổ ơỞở uỦủ ưỬử yỶỷ "},
    {0x30A, u"aÅå uŮů wẘẘ yẙẙ "},
    {0x30B, u"oŐő uŰű уӲӳ "},
    {0x30C,
     u"cČč dĎď eĚě lĽľ nŇň rŘř sŠš tŤť zŽž ǳǄǆ ǳǅǆ aǍǎ iǏǐ oǑǒ uǓǔ üǙǚ gǦǧ kǨǩ "
     u"ʒǮǯ jǰǰ hȞȟ "},
    {0x30F, u"aȀȁ eȄȅ iȈȉ oȌȍ rȐȑ uȔȕ ѵѶѷ "},
    {0x311, u"aȂȃ eȆȇ iȊȋ oȎȏ rȒȓ uȖȗ "},
    {0x31B, u"oƠơ uƯư "},
    {0x323,
     u"bḄḅ dḌḍ hḤḥ kḲḳ lḶḷ mṂṃ nṆṇ rṚṛ sṢṣ tṬṭ vṾṿ wẈẉ zẒẓ aẠạ eẸẹ iỊị oỌọ ơỢợ "
     u"uỤụ ưỰự yỴỵ "},
    {0x324, u"uṲṳ "},
    {0x325, u"aḀḁ "},
    {0x326, u"sȘș tȚț "},
    {0x327, u"cÇç gĢģ kĶķ lĻļ nŅņ rŖŗ sŞş tŢţ eȨȩ dḐḑ hḨḩ "},
    {0x328, u"aĄą eĘę iĮį uŲų oǪǫ "},
    {0x32D, u"dḒḓ eḘḙ lḼḽ nṊṋ tṰṱ uṶṷ "},
    {0x32E, u"hḪḫ "},
    {0x330, u"eḚḛ iḬḭ uṴṵ "},
    {0x331, u"bḆḇ dḎḏ kḴḵ lḺḻ nṈṉ rṞṟ tṮṯ zẔẕ hẖẖ "},
};

// Letters that count as two: the two letters, then capital and small letter in pairs.
struct DoubleRow {
  std::u16string_view bases;
  std::u16string_view letters;
};

inline constexpr DoubleRow kDoubleRows[] = {
    {u"ss", u"ẞß "},    {u"ae", u"Ææ "},    {u"ij", u"Ĳĳ "},    {u"oe", u"Œœ "},
    {u"lj", u"Ǉǉ ǈǉ "}, {u"nj", u"Ǌǌ ǋǌ "}, {u"dz", u"Ǳǳ ǲǳ "},
};

// All other letters with a capital, in pairs.
inline constexpr std::u16string_view kCasePairs =
    u"Þþ Ƅƅ Ƕƕ Ƣƣ Ƨƨ Ƹƹ Ƽƽ Ƿƿ Ǝǝ Ȝȝ Ȣȣ Ɂɂ Ɔɔ Əə Ɛɛ Ɣɣ Ɩɩ Ɯɯ Ɵɵ Ʀʀ Ʃʃ Ʉʉ Ʊʊ Ʌʌ Ʒʒ Ͱͱ Ͳͳ "
    u"Ͷͷ Ͻͻ Ͼͼ Ͽͽ Αα Ββ Γγ Δδ Εε Ζζ Ηη Θθ ϴθ Ιι Κκ Λλ Μμ Νν Ξξ Οο Ππ Ρρ Σσ ςσ Ττ Υυ Φφ "
    u"Χχ Ψψ Ωω Ϗϗ Ϙϙ Ϛϛ Ϝϝ Ϟϟ Ϡϡ Ϣϣ Ϥϥ Ϧϧ Ϩϩ Ϫϫ Ϭϭ Ϯϯ Ϲϲ Ϸϸ Ϻϻ Аа Бб Вв Гг Дд Ее Жж Зз "
    u"Ии Кк Лл Мм Нн Оо Пп Рр Сс Тт Уу Фф Хх Цц Чч Шш Щщ Ъъ Ыы Ьь Ээ Юю Яя Ђђ Єє Ѕѕ Іі "
    u"Јј Љљ Њњ Ћћ Џџ Ѡѡ Ѣѣ Ѥѥ Ѧѧ Ѩѩ Ѫѫ Ѭѭ Ѯѯ Ѱѱ Ѳѳ Ѵѵ Ѹѹ Ѻѻ Ѽѽ Ѿѿ Ҁҁ Ҋҋ Ҍҍ Ҏҏ Ґґ Ғғ Ҕҕ "
    u"Җҗ Ҙҙ Ққ Ҝҝ Ҟҟ Ҡҡ Ңң Ҥҥ Ҧҧ Ҩҩ Ҫҫ Ҭҭ Үү Ұұ Ҳҳ Ҵҵ Ҷҷ Ҹҹ Һһ Ҽҽ Ҿҿ Ӄӄ Ӆӆ Ӈӈ Ӊӊ Ӌӌ Ӎӎ "
    u"Ӏӏ Ӕӕ Әә Ӡӡ Өө Ӷӷ Ӻӻ Ӽӽ Ӿӿ Ỻỻ Ỽỽ "
    u"Ϳϳ ";

// Runs of combining marks of one class (place at the letter): marks of different classes are in no
// order of their own.
struct ClassRun {
  int last;
  int place;
};

inline constexpr ClassRun kClassRuns[] = {
    {0x314, 230}, {0x315, 232}, {0x319, 220}, {0x31A, 232}, {0x31B, 216}, {0x320, 220},
    {0x322, 202}, {0x326, 220}, {0x328, 202}, {0x333, 220}, {0x338, 1},   {0x33C, 220},
    {0x344, 230}, {0x345, 240}, {0x346, 230}, {0x349, 220}, {0x34C, 230}, {0x34E, 220},
    {0x34F, 0},   {0x352, 230}, {0x356, 220}, {0x357, 230}, {0x358, 232}, {0x35A, 220},
    {0x35B, 230}, {0x35C, 233}, {0x35E, 234}, {0x35F, 233}, {0x361, 234}, {0x362, 233},
    {0x36F, 230},
};

}  // namespace store::letters
