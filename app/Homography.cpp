#include "app/Homography.h"

#include "app/StorageFile.h"

#include <algorithm>
#include <cmath>

namespace scenariomatch
{

namespace
{

constexpr int kSide = 3;

bool isHomography(const StorageMatrix& matrix)
{
    return matrix.rows == kSide && matrix.columns == kSide &&
           matrix.values.size() == std::tuple_size_v<GroundMapper::Matrix>;
}

double determinant(const GroundMapper::Matrix& m)
{
    return m[0] * (m[4] * m[8] - m[5] * m[7]) - m[1] * (m[3] * m[8] - m[5] * m[6]) +
           m[2] * (m[3] * m[7] - m[4] * m[6]);
}

} // namespace

std::optional<GroundMapper::Matrix> readHomography(const std::string& path, std::string& error)
{
    const std::optional<StorageFile> file = readStorageFile(path, error);
    if (!file) {
        return std::nullopt;
    }
    const auto found = std::find_if(file->matrices.begin(), file->matrices.end(), isHomography);
    if (found == file->matrices.end()) {
        error = path + ": there is no matrix of 3 rows and 3 columns in it";
        return std::nullopt;
    }
    GroundMapper::Matrix matrix{};
    std::copy(found->values.begin(), found->values.end(), matrix.begin());
    const double size = determinant(matrix);
    if (!std::isfinite(size) || size == 0.0) {
        error = path + ": the matrix \"" + found->key + "\" does not map the image to the ground";
        return std::nullopt;
    }
    return matrix;
}

} // namespace scenariomatch
