#pragma once

#include <string>

namespace LedgerService {

/// One request as the routes see it: whole, within its limits, not yet trusted.
struct Request {
    std::string method;
    std::string path;   // "/v1/snapshot", without a query
    std::string token;  // of the Authorization header; empty when there is none
    std::string remote; // the client's address, for limits only
    std::string body;
    bool fromWebPage = false; // a browser's script sent it, with an Origin header
    // As they were sent, the values of repeated headers separated by commas:
    std::string ifNoneMatch;
    std::string instanceManipulations; // A-IM
    std::string prefer;
};

}
