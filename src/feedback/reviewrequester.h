#pragma once

namespace tomewise {

// What the detail screen needs of the store-review service: one request for a
// review, which the service may decline by its own rules.
class ReviewRequester
{
public:
    virtual ~ReviewRequester() = default;
    virtual void requestReview() = 0;
};

} // namespace tomewise
