// Maya ASCII is a sequence of commands ended by ';'. Words are separated by blanks; strings are in
// double quotes with backslash escapes and may be joined over lines with '+'.
#include "MayaAsciiTokenizer.h"

namespace vqmhost {

static bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v';
}

// What ends a word: blanks, ';' and '"'.
static const struct WordEnds {
    bool table[256] = {};
    WordEnds()
    {
        for (unsigned char c : {' ', '\t', '\n', '\r', '\f', '\v', ';', '"'}) table[c] = true;
    }
} kWordEnds;

void MaTokenizer::advance()
{
    if (text_[position_] == '\n') {
        ++line_;
        column_ = 1;
    } else {
        ++column_;
    }
    ++position_;
}

bool MaTokenizer::fail(const std::string& message, uint32_t line, uint32_t column)
{
    error_ = message;
    errorLine_ = line;
    errorColumn_ = column;
    return false;
}

void MaTokenizer::skipSpaceAndComments()
{
    while (position_ < text_.size()) {
        char c = text_[position_];
        if (c == ' ' || c == '\t') {
            ++position_;
            ++column_;
        } else if (isBlank(c)) {
            advance();
        } else if (c == '/' && position_ + 1 < text_.size() && text_[position_ + 1] == '/') {
            while (position_ < text_.size() && text_[position_] != '\n') advance();
        } else if (c == '/' && position_ + 1 < text_.size() && text_[position_ + 1] == '*') {
            advance();
            advance();
            while (position_ + 1 < text_.size() && !(text_[position_] == '*' && text_[position_ + 1] == '/')) advance();
            if (position_ + 1 < text_.size()) {
                advance();
                advance();
            } else {
                position_ = text_.size();
            }
        } else {
            return;
        }
    }
}

bool MaTokenizer::readString(MaStatement& statement, MaToken& token)
{
    std::string joined;
    bool needsStorage = false;
    size_t firstStart = 0, firstEnd = 0;
    int pieces = 0;
    for (;;) {
        uint32_t line = line_, column = column_;
        advance();  // opening quote
        size_t start = position_;
        bool escaped = false;
        std::string piece;
        while (position_ < text_.size() && text_[position_] != '"') {
            char c = text_[position_];
            if (c == '\\' && position_ + 1 < text_.size()) {
                if (!escaped) piece.assign(text_.data() + start, position_ - start);
                escaped = true;
                advance();
                char e = text_[position_];
                piece += e == 'n' ? '\n' : e == 't' ? '\t' : e == 'r' ? '\r' : e;
                advance();
                continue;
            }
            if (escaped) piece += c;
            advance();
        }
        if (position_ >= text_.size()) return fail("unterminated string", line, column);
        if (!escaped) piece.assign(text_.data() + start, position_ - start);
        if (pieces == 0 && !escaped) {
            firstStart = start;
            firstEnd = position_;
        } else {
            needsStorage = true;
        }
        if (pieces == 0) joined = piece;
        else joined += piece;
        ++pieces;
        advance();  // closing quote

        // A '+' between two strings joins them.
        size_t savePosition = position_;
        uint32_t saveLine = line_, saveColumn = column_;
        skipSpaceAndComments();
        if (position_ < text_.size() && text_[position_] == '+') {
            advance();
            skipSpaceAndComments();
            if (position_ < text_.size() && text_[position_] == '"') {
                needsStorage = true;
                continue;
            }
            return fail("'+' must be followed by a string", line_, column_);
        }
        position_ = savePosition;
        line_ = saveLine;
        column_ = saveColumn;
        break;
    }
    token.quoted = true;
    if (needsStorage || pieces != 1) {
        statement.storage.push_back(std::move(joined));
        token.text = statement.storage.back();
    } else {
        token.text = text_.substr(firstStart, firstEnd - firstStart);
    }
    return true;
}

bool MaTokenizer::next(MaStatement& statement)
{
    statement.words.clear();
    statement.quoted.clear();
    statement.storage.clear();
    if (failed()) return false;
    skipSpaceAndComments();
    if (position_ >= text_.size()) return false;
    statement.line = line_;
    statement.column = column_;
    for (;;) {
        skipSpaceAndComments();
        if (position_ >= text_.size())
            return fail("statement is not closed by ';'", statement.line, statement.column);
        char c = text_[position_];
        if (c == ';') {
            advance();
            break;
        }
        if (c == '"') {
            MaToken token;
            if (!readString(statement, token)) return false;
            statement.words.push_back(token.text);
            statement.quoted.push_back(1);
        } else {
            // A word holds no line break, so only the column moves.
            const size_t start = position_;
            const char* data = text_.data();
            size_t end = start;
            while (end < text_.size() && !kWordEnds.table[static_cast<unsigned char>(data[end])]) ++end;
            column_ += uint32_t(end - start);
            position_ = end;
            statement.words.push_back(text_.substr(start, end - start));
            statement.quoted.push_back(0);
        }
    }
    if (statement.words.empty()) return next(statement);  // a lone ';'
    const MaToken command = statement.token(0);
    bool identifier = !command.quoted && !command.text.empty() &&
                      (isalpha((unsigned char)command.text[0]) || command.text[0] == '_');
    for (char ch : command.text) identifier = identifier && (isalnum((unsigned char)ch) || ch == '_');
    if (!identifier)
        return fail("expected a command name, found '" + std::string(command.text) + "'", statement.line, statement.column);
    return true;
}

}  // namespace vqmhost
