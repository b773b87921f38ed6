// The entry through which a host rates one shipment.
#include <hundredweight/exports.h>

#include "rating/rating_run.h"
#include "rating/request.h"

using namespace hundredweight;

int32_t HWT_CALL RateShipment(RateContext* context, int32_t request_code, int32_t /*reserved*/) {
    context->EngineListCount = 0;
    if (context->UseEngine == 0) return kEngineOff;
    if (PrepareEngineRequest(*context, request_code) == 0) return kRatingFailed;
    return RunEngineRating(*context);
}
