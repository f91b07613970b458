#pragma once

#include <chrono>
#include <string>

#include "LedgerService/Http/ContentCoding.h"

namespace LedgerService {

/// One request as the routes see it: whole, within its limits, not yet trusted.
struct Request {
    std::string id;     // its own: in the log and in the reply
    std::string method; // "(unknown)" when HTTP does not know it
    std::string path;   // "/v1/snapshot", without a query
    std::string query;  // what follows the path's question mark, as it was sent
    std::string token;  // of the Authorization header; empty when there is none
    std::string remote; // the client's address as limits count it
    std::string body;
    bool onlyReads = false;                         // its method changes nothing, whatever the path
    bool fromWebPage = false;                       // a browser's script sent it, with an Origin header
    ContentCoding coding = ContentCoding::identity; // of long replies to it
    // As they were sent, the values of repeated headers separated by commas:
    std::string ifNoneMatch;
    std::string instanceManipulations; // A-IM
    std::string prefer;
    std::chrono::steady_clock::time_point arrived{}; // when it was whole: its time counts from here
};

}
