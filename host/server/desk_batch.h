// The rows of a batch at the desk.
#pragma once

#include "server/desk.h"

namespace cwt {

/// The rows of a block, in their form, without a header.
DeskReply AnswerBatch(Session& session, const DeskRequest& request);

}  // namespace cwt
