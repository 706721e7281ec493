// Splits Maya ASCII text into statements of words and strings, with their lines and columns.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace vqmhost {

struct MaToken {
    std::string_view text;  // unescaped; strings joined by '+' are one token
    bool quoted = false;
};

// The tokens of a statement, kept as two parallel lists so that a long run of values can be
// handed on as a run of words without copying. The command is the first token; it starts at the
// statement's line and column.
struct MaStatement {
    std::vector<std::string_view> words;  // the text of each token
    std::vector<char> quoted;             // per token: whether it was a string
    std::deque<std::string> storage;      // text of strings that needed unescaping or joining
    uint32_t line = 0;
    uint32_t column = 0;

    size_t size() const { return words.size(); }
    MaToken token(size_t i) const { return MaToken{words[i], quoted[i] != 0}; }
};

class MaTokenizer {
public:
    explicit MaTokenizer(std::string_view text) : text_(text) {}

    // Reads the next statement. False at the end of the text or on a syntax error; error() tells which.
    bool next(MaStatement& statement);
    bool failed() const { return !error_.empty(); }
    const std::string& error() const { return error_; }
    uint32_t errorLine() const { return errorLine_; }
    uint32_t errorColumn() const { return errorColumn_; }

private:
    void skipSpaceAndComments();
    bool readString(MaStatement& statement, MaToken& token);
    void advance();
    bool fail(const std::string& message, uint32_t line, uint32_t column);

    std::string_view text_;
    size_t position_ = 0;
    uint32_t line_ = 1;
    uint32_t column_ = 1;
    std::string error_;
    uint32_t errorLine_ = 0;
    uint32_t errorColumn_ = 0;
};

}  // namespace vqmhost
