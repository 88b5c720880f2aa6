// The demo database: a goods reference with folders (Ref03) and a supplier's
// price list of those goods (Ref01), filled from a fixed pseudo-random sequence
// so that every build writes the same content.
#include "localDbMake.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>
#include <QVariant>

#include <initializer_list>
#include <random>
#include <vector>

namespace localDbMake {

namespace {

struct folderDescription {
    const char *name;
    int parent; // place in the folder list, -1 at the root
    int priceLow; // the supplier's prices of its goods, roubles
    int priceHigh;
    std::vector<const char *> stems;
    std::vector<const char *> measures;
};

// Parents come before their children, so a folder's parent id is known when
// it is written. A folder may hold both goods and folders (Сыры).
const std::vector<folderDescription> folders = {
    {"Бакалея", -1, 0, 0, {}, {}},
    {"Крупы", 0, 50, 400,
     {"Гречка ядрица", "Рис круглозёрный", "Рис длиннозёрный", "Пшено шлифованное", "Овсяные хлопья",
      "Манная крупа", "Перловка", "Горох колотый"},
     {"400 г", "800 г", "900 г", "1 кг", "5 кг"}},
    {"Макаронные изделия", 0, 40, 250,
     {"Спагетти", "Рожки", "Перья", "Вермишель", "Лапша яичная", "Ракушки", "Макароны витые"},
     {"250 г", "400 г", "450 г", "1 кг"}},
    {"Мука и сахар", 0, 30, 400,
     {"Мука пшеничная высший сорт", "Мука ржаная", "Сахар-песок", "Сахар кусковой", "Сахарная пудра",
      "Соль поваренная", "Крахмал картофельный"},
     {"500 г", "1 кг", "2 кг", "5 кг"}},
    {"Консервы", 0, 60, 400,
     {"Горошек зелёный", "Кукуруза сладкая", "Фасоль красная", "Тушёнка говяжья", "Сайра в масле", "Шпроты",
      "Икра кабачковая", "Огурцы маринованные"},
     {"240 г", "400 г", "720 мл"}},
    {"Молочные продукты", -1, 0, 0, {}, {}},
    {"Молоко и сливки", 5, 60, 250,
     {"Молоко 3,2%", "Молоко 2,5%", "Молоко 1,5%", "Молоко топлёное 4%", "Сливки 10%", "Сливки 20%",
      "Молоко сгущённое"},
     {"0,5 л", "0,9 л", "1 л", "1,5 л"}},
    {"Сыры", 5, 150, 1200,
     {"Сыр Российский 50%", "Сыр Голландский 45%", "Сыр Пошехонский", "Сыр Гауда", "Сыр Маасдам", "Брынза",
      "Сулугуни"},
     {"200 г", "300 г", "весовой, кг"}},
    {"Сыры плавленые", 7, 50, 300,
     {"Сыр плавленый сливочный", "Сыр плавленый с грибами", "Сыр плавленый с ветчиной", "Сырок плавленый",
      "Сыр колбасный копчёный"},
     {"90 г", "100 г", "200 г", "400 г"}},
    {"Кисломолочные продукты", 5, 40, 250,
     {"Кефир 1%", "Кефир 2,5%", "Ряженка 4%", "Простокваша", "Йогурт питьевой", "Творог 5%", "Творог 9%",
      "Сметана 15%", "Сметана 20%"},
     {"180 г", "350 г", "450 г", "0,9 л"}},
    {"Мясо и птица", -1, 200, 900,
     {"Говядина лопатка", "Свинина шея", "Фарш домашний", "Курица тушка", "Филе куриное", "Окорочка куриные",
      "Индейка бедро", "Сосиски молочные", "Колбаса докторская"},
     {"500 г", "1 кг", "весовой, кг"}},
    {"Рыба и морепродукты", -1, 150, 1500,
     {"Минтай филе", "Сельдь слабосолёная", "Скумбрия копчёная", "Горбуша", "Треска",
      "Креветки варёно-мороженые", "Кальмар тушка", "Крабовые палочки"},
     {"200 г", "500 г", "1 кг"}},
    {"Овощи и фрукты", -1, 30, 300,
     {"Картофель", "Морковь", "Лук репчатый", "Капуста белокочанная", "Свёкла", "Яблоки", "Бананы",
      "Апельсины", "Лимоны", "Огурцы", "Помидоры"},
     {"весовой, кг", "сетка 2 кг", "сетка 5 кг"}},
    {"Хлеб и выпечка", -1, 30, 150,
     {"Хлеб Бородинский", "Батон нарезной", "Хлеб ржаной", "Багет", "Лаваш тонкий", "Сушки", "Баранки",
      "Пряники"},
     {"300 г", "400 г", "500 г"}},
    {"Напитки", -1, 0, 0, {}, {}},
    {"Соки и нектары", 14, 40, 250,
     {"Сок яблочный", "Сок апельсиновый", "Сок томатный", "Нектар персиковый", "Нектар вишнёвый",
      "Морс клюквенный", "Компот"},
     {"0,2 л", "1 л", "2 л"}},
    {"Вода минеральная", 14, 25, 150,
     {"Вода питьевая негазированная", "Вода газированная", "Вода минеральная лечебно-столовая", "Лимонад",
      "Квас"},
     {"0,5 л", "1 л", "1,5 л", "5 л"}},
    {"Чай и кофе", 14, 80, 1500,
     {"Чай чёрный листовой", "Чай зелёный", "Чай чёрный в пакетиках", "Кофе молотый", "Кофе в зёрнах",
      "Кофе растворимый", "Какао-порошок"},
     {"25 пак.", "100 г", "250 г", "500 г"}},
    {"Кондитерские изделия", -1, 50, 900,
     {"Конфеты шоколадные", "Карамель", "Шоколад молочный", "Шоколад горький 70%", "Печенье овсяное",
      "Вафли", "Зефир", "Пастила", "Мармелад"},
     {"100 г", "200 г", "250 г", "1 кг"}},
    {"Бытовая химия", -1, 60, 900,
     {"Порошок стиральный", "Средство для мытья посуды", "Мыло хозяйственное", "Чистящее средство",
      "Отбеливатель", "Кондиционер для белья"},
     {"200 г", "500 мл", "1 л", "3 кг"}},
};

// The first, empty, maker is the plain name that every good has once.
const std::vector<const char *> makers = {"",           "Зорька",        "Луговое",         "Усадьба",
                                          "Тихий дол",  "Красная горка", "Солнечный край",  "Хозяюшка",
                                          "Добрый двор", "Заречье",      "Полесье",         "Мельница"};

// Goods kept at the root, outside every folder, and their prices.
const std::vector<const char *> rootGoods = {"Пакет полиэтиленовый", "Доставка заказа по городу"};
constexpr int rootPriceLow = 5;
constexpr int rootPriceHigh = 300;

constexpr size_t goodsTotal = 3000;
constexpr int folderMark = 1;
// Goods are 2, not 0, so that in the order (parentid, isfolder, descr) a
// folder's subfolders come before its goods.
constexpr int goodMark = 2;
// About one good in seven has no line in the supplier's price list, so a left
// join of the two tables has rows without a price.
constexpr unsigned pricedPerSeven = 6;

struct good {
    int folder; // place in the folder list, -1 at the root
    QString name;
    bool weighed;
};

// The sequence of std::minstd_rand is fixed by the standard; the reductions
// below are done here, as the library's distributions may differ between
// implementations.
class demoRandom {
public:
    unsigned below(unsigned bound) { return unsigned(generator() % bound); }

    template <typename T> void shuffle(std::vector<T> &items)
    {
        for (size_t i = items.size(); i > 1; --i)
            std::swap(items[i - 1], items[below(unsigned(i))]);
    }

private:
    std::minstd_rand generator{20200215u};
};

// Every stem in every measure without a maker, then a random choice of the
// made ones up to the total, in a random order: ids of a reference grow as
// goods are entered, not folder by folder.
std::vector<good> goodsChosen(demoRandom &random)
{
    std::vector<good> plain;
    std::vector<good> made;
    for (size_t f = 0; f < folders.size(); ++f) {
        for (const char *stem : folders[f].stems) {
            for (const char *measure : folders[f].measures) {
                const QString name = QString::fromUtf8(stem) + QLatin1Char(' ') + QString::fromUtf8(measure);
                const bool weighed = QString::fromUtf8(measure).startsWith(QStringLiteral("весовой"));
                plain.push_back({int(f), name, weighed});
                for (size_t m = 1; m < makers.size(); ++m)
                    made.push_back({int(f), name + QStringLiteral(" \"%1\"").arg(QString::fromUtf8(makers[m])),
                                    weighed});
            }
        }
    }
    random.shuffle(made);
    const size_t wanted = goodsTotal - rootGoods.size() - plain.size();
    plain.insert(plain.end(), made.begin(), made.begin() + qMin(wanted, made.size()));
    for (const char *name : rootGoods)
        plain.push_back({-1, QString::fromUtf8(name), false});
    random.shuffle(plain);
    return plain;
}

// Codes are unique but do not follow the ids, so the order by code differs
// from the order of entry.
QString referenceCode(qint64 id)
{
    return QString::number((id * 7919) % 100003).rightJustified(6, QLatin1Char('0'));
}

bool failed(const QSqlQuery &query, const QString &what, QString &error)
{
    error = QStringLiteral("%1: %2").arg(what, query.lastError().text());
    return false;
}

bool statementsRun(QSqlDatabase &database, std::initializer_list<const char *> statements, QString &error)
{
    QSqlQuery query(database);
    for (const char *statement : statements)
        if (!query.exec(QString::fromLatin1(statement)))
            return failed(query, QString::fromLatin1(statement), error);
    return true;
}

bool schemaCreate(QSqlDatabase &database, QString &error)
{
    return statementsRun(database,
                         {"CREATE TABLE Ref03 (id INTEGER PRIMARY KEY AUTOINCREMENT, parentid INTEGER, "
                          "isfolder INTEGER, code CHAR(12), descr CHAR(100))",
                          "CREATE TABLE Ref01 (id INTEGER PRIMARY KEY AUTOINCREMENT, Owner INTEGER, code CHAR(12), "
                          "descr CHAR(100), price NUMERIC(15), unit CHAR(10))"},
                         error);
}

// Made after the rows are in: one sort per index instead of a tree kept
// balanced through every insert. Each key ends with id, so it is unique, and
// the hierarchy of a reference is walked by the ones led by parentid, isfolder.
bool indexesCreate(QSqlDatabase &database, QString &error)
{
    return statementsRun(database,
                         {"CREATE INDEX Ref03_CODE ON Ref03 (code, id)",
                          "CREATE INDEX Ref03_DESCR ON Ref03 (descr, id)",
                          "CREATE INDEX Ref03_PCODE ON Ref03 (parentid, isfolder, code, id)",
                          "CREATE INDEX Ref03_PDESCR ON Ref03 (parentid, isfolder, descr, id)",
                          "CREATE INDEX Ref01_CODE ON Ref01 (code, id)",
                          "CREATE INDEX Ref01_DESCR ON Ref01 (descr, id)",
                          "CREATE INDEX Ref01_OWNER ON Ref01 (Owner, id)"},
                         error);
}

// Rows of Ref03 with their ids given here, as a code is made from its id.
class referenceWriter {
public:
    explicit referenceWriter(QSqlDatabase &database) : insert(database)
    {
        insert.prepare(
            QStringLiteral("INSERT INTO Ref03 (id, parentid, isfolder, code, descr) VALUES (?, ?, ?, ?, ?)"));
    }

    // The id given to the row, or 0 with `error` set.
    qint64 write(qint64 parent, int mark, const QString &name, QString &error)
    {
        const qint64 id = lastId + 1;
        insert.addBindValue(id);
        insert.addBindValue(parent);
        insert.addBindValue(mark);
        insert.addBindValue(referenceCode(id));
        insert.addBindValue(name);
        if (!insert.exec()) {
            failed(insert, QStringLiteral("Ref03 ") + name, error);
            return 0;
        }
        return lastId = id;
    }

private:
    QSqlQuery insert;
    qint64 lastId = 0;
};

// The supplier's line of a good: its own article number, the name as the
// supplier writes it, a price in roubles and tens of kopecks, and the unit.
bool priceWrite(QSqlQuery &insert, qint64 owner, const good &item, demoRandom &random, QString &error)
{
    const int low = item.folder < 0 ? rootPriceLow : folders[size_t(item.folder)].priceLow;
    const int high = item.folder < 0 ? rootPriceHigh : folders[size_t(item.folder)].priceHigh;
    const unsigned kopecks = (unsigned(low) * 10 + random.below(unsigned(high - low) * 10)) * 10;
    insert.addBindValue(owner);
    insert.addBindValue(QString::number(100000 + random.below(900000)));
    insert.addBindValue(item.name.toUpper());
    insert.addBindValue(kopecks / 100.0);
    insert.addBindValue(item.weighed ? QStringLiteral("кг") : QStringLiteral("шт"));
    return insert.exec() || failed(insert, QStringLiteral("Ref01 ") + item.name, error);
}

bool demoFill(QSqlDatabase &database, QString &error)
{
    if (!schemaCreate(database, error))
        return false;
    if (!database.transaction()) {
        error = database.lastError().text();
        return false;
    }
    demoRandom random;
    referenceWriter reference(database);
    std::vector<qint64> folderIds;
    for (const folderDescription &folder : folders) {
        const qint64 parent = folder.parent < 0 ? 0 : folderIds[size_t(folder.parent)];
        const qint64 id = reference.write(parent, folderMark, QString::fromUtf8(folder.name), error);
        if (id == 0)
            return false;
        folderIds.push_back(id);
    }
    QSqlQuery price(database);
    price.prepare(QStringLiteral("INSERT INTO Ref01 (Owner, code, descr, price, unit) VALUES (?, ?, ?, ?, ?)"));
    for (const good &item : goodsChosen(random)) {
        const qint64 parent = item.folder < 0 ? 0 : folderIds[size_t(item.folder)];
        const qint64 id = reference.write(parent, goodMark, item.name, error);
        if (id == 0)
            return false;
        if (random.below(7) < pricedPerSeven && !priceWrite(price, id, item, random, error))
            return false;
    }
    if (!database.commit()) {
        error = database.lastError().text();
        return false;
    }
    return indexesCreate(database, error);
}

} // namespace

bool demoWrite(const QString &fileName, QString &error)
{
    return databaseWrite(fileName, demoFill, error);
}

} // namespace localDbMake
