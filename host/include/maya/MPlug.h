#pragma once

#include <hostPrivate/access.h>
#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

#include <cstddef>

OPENMAYA_MAJOR_NAMESPACE_OPEN

/// One attribute of one node, or one element or child of it.
///
/// A plug is a place, not a value: it stays usable while the value changes, and an element that does not
/// exist yet has a plug too. Reading such an element gives the default and does not create it. Writing
/// creates it.
class OPENMAYA_EXPORT MPlug {
  public:
    MPlug();
    MPlug(const MPlug& other);
    MPlug(const MObject& node, const MObject& attribute);
    ~MPlug();

    MPlug& operator=(const MPlug& other);
    bool operator==(const MPlug& other) const;
    bool operator==(const MObject& attribute) const;
    bool operator!=(const MPlug& other) const;
    bool operator!=(const MObject& attribute) const;

    MObject attribute(MStatus* status = nullptr) const;
    MObject node(MStatus* status = nullptr) const;
    /// Node name, a dot, the attribute in long names. Multi ancestors keep their index. Plain compound
    /// parents are left out.
    MString name(MStatus* status = nullptr) const;
    MString partialName(bool includeNodeName = false, bool includeNonMandatoryIndices = false,
                        bool includeInstancedIndices = false, bool useAlias = false,
                        bool useFullAttributePath = false, bool useLongNames = false,
                        MStatus* status = nullptr) const;

    bool isNull(MStatus* status = nullptr) const;
    bool isArray(MStatus* status = nullptr) const;
    bool isElement(MStatus* status = nullptr) const;
    bool isCompound(MStatus* status = nullptr) const;
    bool isChild(MStatus* status = nullptr) const;
    bool isDynamic(MStatus* status = nullptr) const;
    bool isLocked(MStatus* status = nullptr) const;
    MStatus setLocked(bool locked);
    bool isKeyable(MStatus* status = nullptr) const;
    MStatus setKeyable(bool keyable);

    unsigned int numElements(MStatus* status = nullptr) const;
    /// Like numElements(), after evaluating the multi.
    unsigned int evaluateNumElements(MStatus* status = nullptr);
    unsigned int numChildren(MStatus* status = nullptr) const;
    unsigned int numConnectedElements(MStatus* status = nullptr) const;
    unsigned int numConnectedChildren(MStatus* status = nullptr) const;
    unsigned int logicalIndex(MStatus* status = nullptr) const;
    /// Fills the ascending logical indices of the existing elements.
    /// @return their number
    unsigned int getExistingArrayAttributeIndices(MIntArray& indices, MStatus* status = nullptr);
    MStatus selectAncestorLogicalIndex(unsigned int index, const MObject& attribute = MObject::kNullObj);

    MPlug elementByLogicalIndex(unsigned int index, MStatus* status = nullptr) const;
    MPlug elementByPhysicalIndex(unsigned int index, MStatus* status = nullptr) const;
    MPlug connectionByPhysicalIndex(unsigned int index, MStatus* status = nullptr) const;
    /// The multi that this element belongs to.
    MPlug array(MStatus* status = nullptr) const;
    /// The compound that this child belongs to.
    MPlug parent(MStatus* status = nullptr) const;
    MPlug child(unsigned int index, MStatus* status = nullptr) const;
    MPlug child(MObject& attribute, MStatus* status = nullptr) const;

    bool isConnected(MStatus* status = nullptr) const;
    bool isSource(MStatus* status = nullptr) const;
    bool isDestination(MStatus* status = nullptr) const;
    /// Lists the source of this plug (asDst), its destinations (asSrc), or both.
    bool connectedTo(MPlugArray& array, bool asDst, bool asSrc, MStatus* status = nullptr) const;
    MPlug source(MStatus* status = nullptr) const;
    bool destinations(MPlugArray& plugs, MStatus* status = nullptr) const;

    /// Attribute data as an object. If the data was never set, fails and gives a null object.
    MStatus getValue(MObject& value) const;
    MStatus getValue(double& value) const;
    MStatus getValue(float& value) const;
    MStatus getValue(MInt64& value) const;
    MStatus getValue(int& value) const;
    MStatus getValue(short& value) const;
    MStatus getValue(bool& value) const;
    MStatus getValue(MString& value) const;
    MObject asMObject(MStatus* status = nullptr) const;
    double asDouble(MStatus* status = nullptr) const;
    float asFloat(MStatus* status = nullptr) const;
    MInt64 asInt64(MStatus* status = nullptr) const;
    int asInt(MStatus* status = nullptr) const;
    short asShort(MStatus* status = nullptr) const;
    bool asBool(MStatus* status = nullptr) const;
    MString asString(MStatus* status = nullptr) const;

    /// Replaces attribute data. On a multi, an empty array or a null object removes every element.
    MStatus setValue(const MObject& value);
    MStatus setValue(double value);
    MStatus setValue(float value);
    MStatus setValue(MInt64 value);
    MStatus setValue(int value);
    MStatus setValue(short value);
    MStatus setValue(bool value);
    MStatus setValue(const MString& value);
    MStatus setValue(const char* value);
    MStatus setMObject(const MObject& value);
    MStatus setDouble(double value);
    MStatus setFloat(float value);
    MStatus setInt64(MInt64 value);
    MStatus setInt(int value);
    MStatus setShort(short value);
    MStatus setBool(bool value);
    MStatus setString(const MString& value);

  private:
    friend struct host::api::PlugAccess;

    static constexpr std::size_t kPlaceSize = 48;

    alignas(void*) unsigned char place_[kPlaceSize];  // a host::graph::Plug
    unsigned int moment_ = 0;                         // when it was handed out
    bool isNetworked_ = false;                        // it came from a connection
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
