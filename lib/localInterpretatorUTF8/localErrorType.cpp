#include "localErrorType.h"

#include "localServices.h"
#include "localString.h"

#include <QString>

#include <cstdlib>
#include <iostream>

namespace {

struct localErrorTextRow {
    int32_t status;
    const char16_t *text;
};

// Only the numbers that have a text of their own; the rest fall through to
// the "unknown status" line.
const localErrorTextRow localErrorTexts[] = {
    {2, u"Непредвиденное использование зарезарвированного слова КонецЦикла (EndDo)"},
    {3, u"Непредвиденное использование зарезарвированного слова КонецФункции (EndFunction)"},
    {4, u"Непредвиденное использование зарезарвированного слова КонецЕсли (EndIf)"},
    {7, u"Выход за границы массива."},
    {8, u"Атрибут не может быть прочитан. Возможно в декларации класса для него не установлена функция GET."},
    {9, u"Атрибут не может быть установлен. Возможно в декларации класса для него не установлена функция SET."},
    {10, u"Неверный атрибут."},
    {11, u"Не задан конструктор для каласса."},
    {12, u"Не задан статический метод для каласса."},
    {13, u"Не задан статический атрибут для каласса."},
    {14, u"Неизвестный класс."},
    {15, u"Встретился оператор ВОЗВРАТ (return) без возвращаемого значения."},
    {16, u"Ошибка кода. Проверьте консольный вывод. Обратитесь к разработчику."},
    {17, u"Неизвестная команда."},
    {18, u"Контекст не задан."},
    {19, u"Команда BREAK (ПРЕРВАТЬ) встретилась вне цикла."},
    {20, u"Команда CONTINUE (ПРОДОЛЖИТЬ) встретилась вне цикла."},
    {21, u"Деление на 0!"},
    {22, u"Ошибка соединения с базой данных."},
    {23, u"Файл не найден."},
    {24, u"Неизвестная функция."},
    {26, u"Метод существует, но моожет быть применен только в графической версии."},
    {27, u"Метод не существует. Возможно в декларации класса для него не установлена функция EXEC."},
    {28, u"Ошибка при создании объекта."},
    {30, u"Объект неизвестного класса!"},
    {31, u"Неверное количество параметров!"},
    {32, u"Параметр неверен (недопустимое значение)!"},
    {33, u"Неверный тип параметра (-ов)!"},
    {34, u"Ошибка разбора формата JSON!"},
    {35, u"Ошибка восстановления значения из строки JSON. В частности возникает когда в списке значений после "
         u"парсинга JSON не хватает информации для воззтановления ValueDescription. "},
    {36, u"Ошибка точности! Возможно, указано число сослишком большим количеством значащих символов"},
    {37, u"Синтаксическая ошибка."},
    {39, u"Синтаксическая ошибка. Ожидается \"=\""},
    {40, u"Синтаксическая ошибка. Ожидается \"(\""},
    {41, u"Синтаксическая ошибка. Ожидается \")\""},
    {42, u"Синтаксическая ошибка. Ожидается \";\""},
    {43, u"Синтаксическая ошибка. Ожидается ключевое слово \"ЦИКЛ\" (\"do\") "},
    {44, u"Синтаксическая ошибка. Ожидается ключевое слово \"КОНЕЦЦИКЛА\" (\"enddo\") "},
    {45, u"Синтаксическая ошибка. Ожидается ключевое слово \"КОНЕЦЕСЛИ\" (\"endif\") "},
    {46, u"Синтаксическая ошибка. Ожидается ключевое слово \"КОНЕЦФУНКЦИИ\" (\"endfunction\") "},
    {47, u"Синтаксическая ошибка. Ожидается ключевое слово \"ТОГДА\" (\"then\") "},
    {48, u"Синтаксическая ошибка. Ожидается ключевое слово \"ПО\" (\"to\") "},
    {49, u"Неизвестный тип!"},
    {50, u"Неверный тип операнда (-ов)!"},
    {51, u"Значение не является объектом."},
    {52, u"Переменная не существует."},
    {53, u"Переменная не может быть задекларирована повторно."},
    {54, u"Ок. Ошибки отсутствуют"},
    {55, u"Прервано пользователем."},
};

constexpr int32_t localErrorTextMax = 60;

// Indexed by status so that the lookup is one array access.
struct localErrorTextIndex {
    const char16_t *byStatus[localErrorTextMax] = {};
    localErrorTextIndex()
    {
        for (const localErrorTextRow &row : localErrorTexts)
            byStatus[row.status] = row.text;
    }
};

} // namespace

std::u16string localErrorText(int32_t status)
{
    static const localErrorTextIndex index;
    if (status >= 0 && status < localErrorTextMax && index.byStatus[status] != nullptr)
        return index.byStatus[status];
    return u"Неизвестный статус возврата ном: " + localNumberToWide(status);
}

int localLineResolve(const std::u16string &text, size_t position, size_t &lineStart)
{
    lineStart = 0;
    if (text.empty())
        return 1;
    if (position >= text.size())
        position = text.size() - 1;
    int line = 1;
    for (size_t i = 0; i <= position; ++i) {
        if (text[i] == u'\n') {
            ++line;
            lineStart = i + 1;
        }
    }
    return line;
}

std::u16string localPositionDescription(const std::u16string &text, size_t position)
{
    if (position >= text.size())
        return u"Unabel resolve pos " + localNumberToWide(double(position)) + u" in line with length "
               + localNumberToWide(double(text.size()));
    size_t lineStart = 0;
    const int line = localLineResolve(text, position, lineStart);
    return u"pos :" + localNumberToWide(double(position)) + u"( line:" + localNumberToWide(line) + u", pos: "
           + localNumberToWide(double(position) - double(lineStart)) + u")";
}

std::u16string localRestOfLine(const std::u16string &text, size_t position)
{
    if (position >= text.size())
        return std::u16string();
    const size_t end = text.find(u'\n', position);
    return text.substr(position, end == std::u16string::npos ? std::u16string::npos : end - position);
}

void localNarrowAppend(std::string &out, const std::u16string &text)
{
    for (char16_t c : text) {
        if (c <= 0xFF) {
            out += char(c);
        } else if (c == 0x0401 || c == 0x0451 || (c >= 0x0410 && c <= 0x044F)) {
            out += char(0xC0 | (c >> 6));
            out += char(0x80 | (c & 0x3F));
        } else {
            out += '1';
        }
    }
}

std::string localNarrow(const std::u16string &text)
{
    std::string out;
    out.reserve(text.size());
    localNarrowAppend(out, text);
    return out;
}

std::u16string localAscii(const char *text)
{
    std::u16string out;
    for (; *text; ++text)
        out += char16_t(static_cast<unsigned char>(*text));
    return out;
}

std::string localDiagTail(const char *func, const char *file, int line)
{
    return std::string(" func: ") + func + " file: " + file + " line: " + std::to_string(line) + "\n";
}

void localDiag(const std::u16string &message, bool error, const char *func, const char *file, int line)
{
    std::string out = error ? "ERROR!!! " : "";
    localNarrowAppend(out, message);
    out += localDiagTail(func, file, line);
    std::cout << out << std::flush;
}

void exit_FAILURE(const std::u16string &message)
{
    std::cout << "Error!!!  " << localNarrow(message) << localDiagTail("exit_FAILURE", __FILE__, __LINE__)
              << std::flush;
    localServices::instance().fatalBox(u"Halt!!! Runtime error.", message);
    std::exit(1);
}

void exit_FAILURE(const char *message)
{
    exit_FAILURE(localFromQString(QString::fromUtf8(message)));
}

void exit_FAILURE(const std::string &message)
{
    exit_FAILURE(message.c_str());
}
