#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "net/http_body.h"
#include "net/https_client.h"

namespace vorc {
namespace {

using std::string_literals::operator""s;

TEST(HttpUrl, Parts) {
  const struct {
    std::string url;
    std::string parts;  // scheme, host, port and the rest; empty where the URL is none
  } cases[] = {
      {"https://h", "tls h 443 "},
      {"http://h", "plain h 80 "},
      {"https://h:0/", "tls h 443 /"},
      {"http://h:-7/x", "plain h 80 /x"},
      {"http://h:/x", "plain h 80 /x"},
      {"http://h:abc/x", "plain h 80 /x"},
      {"http://h:81abc/x", "plain h 81 /x"},
      {"http://h: 81", "plain h 81 "},
      {"http://h:65535", "plain h 65535 "},
      {"http://h/a:9/b", "plain h 80 /a:9/b"},
      {"http://h?q=1", "plain h?q=1 80 "},
      {"http://h//x?y#z", "plain h 80 //x?y#z"},
      {"http://" + std::string(255, 'h'), "plain " + std::string(255, 'h') + " 80 "},
      {"http://" + std::string(256, 'h'), ""},
      {"http://h:65536", ""},
      {"http://h:99999999999999999999", ""},
      {"http://[::1]/", "plain [ 80 /"},
      {"http://:80/", ""},
      {"http:///x", ""},
      {"https://", ""},
      {"HTTP://h", ""},
      {" http://h", ""},
      {"http:/h", ""},
      {"h", ""},
      {"", ""},
  };
  for (const auto& [url, parts] : cases) {
    const auto parsed = ParseHttpUrl(url);
    std::string shown;
    if (parsed) {
      shown = (parsed->use_tls ? "tls " : "plain ") + parsed->host + " " + std::to_string(parsed->port) +
              " " + parsed->rest;
    }
    EXPECT_EQ(shown, parts) << url;
  }
  for (int byte = 0; byte < 256; ++byte) {
    const bool control = byte < 32 || byte == 127;
    EXPECT_EQ(ParseHttpUrl("http://h/a"s + static_cast<char>(byte)).has_value(), !control) << byte;
  }
}

std::string Decoded(std::string body) {
  body.resize(DecodeChunks(body));
  return body;
}

TEST(Chunks, WhatTheyHold) {
  const std::pair<std::string, std::string> cases[] = {
      {"3\r\nabc\r\n0\r\n\r\n", "abc"},
      {"3;name=value\r\nabc\r\n2\r\nde\r\n", "abcde"},
      {"3\r\nabc2\r\nde", "abcde"},
      {"3\r\nabc\r2\r\nde", "abcde"},
      {"0x3\r\nabc\r\n  2\r\nde\r\n", "abcde"},
      {"A\r\n0123456789\r\na\r\n0123456789", "01234567890123456789"},
      {"3\r\nabc\r\n4\r\nde", "abc"},
      {"3\r\nabc\r\n-1\r\nde", "abc"},
      {"7fffffffffffffff\r\nabc", ""},
      {"ffffffffffffffffffff\r\nabc", ""},
      {"3\nabc", ""},
      {"xyz\r\nabc", ""},
      {"2\r\n\0\0\r\n1\r\na"s, "\0\0a"s},
      {"", ""},
  };
  for (const auto& [body, content] : cases) EXPECT_EQ(Decoded(body), content) << body;
}

// Sizes behind long white space, asked for again at each of its lines.
TEST(Chunks, TakeTimeInProportion) {
  std::string body;
  for (int line = 0; line < 1'000'000; ++line) body += "\r\n";
  body += std::string(1'000'000, '0') + "1\r\n";
  EXPECT_GT(Decoded(body).size(), 400'000U);
}

std::string BodyOf(std::string_view answer, int32_t& status) {
  ReceivedBytes bytes;
  for (size_t place = 0; place < answer.size();) {
    const auto room = bytes.Room(answer.size());
    const size_t count = std::min(room.size(), answer.size() - place);
    std::copy_n(answer.begin() + static_cast<std::ptrdiff_t>(place), count, room.begin());
    bytes.Fill(count);
    place += count;
  }
  const auto body = HttpBody::Of(std::move(bytes), status);
  return body ? "[" + std::string(body->text()) + "]" : "none";
}

TEST(HttpBody, OfAnswers) {
  const struct {
    std::string answer;
    std::string body;
    int32_t status;
  } cases[] = {
      {"HTTP/1.1 200 OK\r\n\r\nabc\0def"s, "[abc]", 200},
      {"HTTP/1.1 200 OK\r\nX: y\r\n", "none", 0},
      {"HTTP/1.1 2\r\n\r\n", "[]", 2},
      {"HTTP/1 2\r\n\r\n", "[]", 0},
      {"HTTP/1.1\r\nA: 7\r\n\r\n", "[]", 7},
      {"HTTP/1.1-404\r\n\r\nx", "[x]", 0},
      {"ICE/1.1 200 OK\r\n\r\nx", "[x]", 0},
      {"HTTP/1.1 200\r\nTRANSFER-Encoding: gzip\r\nX: CHUNKED\r\n\r\n1\r\na\r\n", "[a]", 200},
      {"HTTP/1.1 200\r\nX: chunked\r\n\r\n1\r\na\r\n", "[1\r\na\r\n]", 200},
      {"HTTP/1.1 200\r\n\r\ntransfer-encoding: chunked\r\n", "[transfer-encoding: chunked\r\n]", 200},
      {"", "none", 0},
  };
  for (const auto& [answer, body, status] : cases) {
    int32_t told = -1;
    EXPECT_EQ(BodyOf(answer, told), body) << answer;
    EXPECT_EQ(told, status) << answer;
  }
}

}  // namespace
}  // namespace vorc
