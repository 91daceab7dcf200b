// SPDX-License-Identifier: MIT
#pragma once

#include <Base/GCList.h>
#include <GenApi/Types.h>

namespace GENAPI_NAMESPACE {

struct INode;
struct IValue;

/// A list of nodes; the nodes belong to their map.
class GENICAM_DECL node_vector : public GENICAM_NAMESPACE::list_base<INode *>
{
public:
    node_vector() { }
    explicit node_vector(size_t count, INode *value = nullptr) : GENICAM_NAMESPACE::list_base<INode *>(count, value) { }
};

/// A list of features.
class GENICAM_DECL value_vector : public GENICAM_NAMESPACE::list_base<IValue *>
{
public:
    value_vector() { }
    explicit value_vector(size_t count, IValue *value = nullptr) : GENICAM_NAMESPACE::list_base<IValue *>(count, value)
    { }
};

/// Values of a feature whose increment mode is a list.
class GENICAM_DECL int64_autovector_t : public GENICAM_NAMESPACE::list_base<int64_t>
{
public:
    int64_autovector_t() { }
    explicit int64_autovector_t(size_t count) : GENICAM_NAMESPACE::list_base<int64_t>(count, 0) { }
};

class GENICAM_DECL double_autovector_t : public GENICAM_NAMESPACE::list_base<double>
{
public:
    double_autovector_t() { }
    explicit double_autovector_t(size_t count) : GENICAM_NAMESPACE::list_base<double>(count, 0.0) { }
};

typedef node_vector NodeList_t;
typedef value_vector FeatureList_t;

} // namespace GENAPI_NAMESPACE
