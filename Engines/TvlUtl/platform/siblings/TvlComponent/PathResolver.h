// Where documents find the files that they refer to.
#pragma once

namespace Tvl {

/// Turns references of a document into paths. This one knows none: whoever opens a container alone hands it over.
class PathResolver {
public:
    /// Resolves nothing.
    PathResolver() = default;
    virtual ~PathResolver() = default;
};

}   // namespace Tvl
