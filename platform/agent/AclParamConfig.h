// ACL parameter configuration: how ACL features may share TCAM slices and
// how wide their IPv6 keys are. The agent's ACL configuration writes it; the
// TCAM manager reads it (`aclParamConfig`) when it lays out groups and
// observes it for changes.
//
// Every member is an observable attribute (see platform/kiln/Entity.h): all
// start false / tcamBankSharingModeDefault, setting an equal value notifies
// no one.
#pragma once

#include "platform/agent/AclTypes.h"
#include "platform/kiln/Attribute.h"
#include "platform/kiln/Entity.h"

namespace Acl {

class ParamConfig : public Kiln::Entity {
 public:
   class NotifieeConst : public Kiln::Notifiee< ParamConfig > {
    public:
      virtual void onPaclSliceSharingSupported() {}
      virtual void onMirrorAclSliceSharingSupported() {}
      virtual void onQosAclSliceSharingSupported() {}
      virtual void onIngressRaclSharingSupported() {}
      virtual void onQosAclSharingSupported() {}
      virtual void onPaclIpv6KeyWidthMode() {}
      virtual void onQosIpv6KeyWidthMode() {}
   };

   explicit ParamConfig( const Kiln::Name & name ) : Kiln::Entity( name ) {}

   // Port ACLs of IPv4 and IPv6 may share one slice.
   bool paclSliceSharingSupported() const { return paclSliceSharingSupported_.get(); }
   void
   paclSliceSharingSupportedIs( bool v ) {
      attributeIs( paclSliceSharingSupported_, v, &NotifieeConst::onPaclSliceSharingSupported );
   }
   // Mirroring ACL groups of the same ACL type may share one slice.
   bool mirrorAclSliceSharingSupported() const { return mirrorAclSliceSharingSupported_.get(); }
   void
   mirrorAclSliceSharingSupportedIs( bool v ) {
      attributeIs( mirrorAclSliceSharingSupported_, v,
                   &NotifieeConst::onMirrorAclSliceSharingSupported );
   }
   // QoS policy groups of IPv4 and IPv6 may share one slice.
   bool qosAclSliceSharingSupported() const { return qosAclSliceSharingSupported_.get(); }
   void
   qosAclSliceSharingSupportedIs( bool v ) {
      attributeIs( qosAclSliceSharingSupported_, v,
                   &NotifieeConst::onQosAclSliceSharingSupported );
   }
   // Ingress router ACLs applied to several interfaces share their entries.
   bool ingressRaclSharingSupported() const { return ingressRaclSharingSupported_.get(); }
   void
   ingressRaclSharingSupportedIs( bool v ) {
      attributeIs( ingressRaclSharingSupported_, v,
                   &NotifieeConst::onIngressRaclSharingSupported );
   }
   // QoS policies applied to several interfaces share their entries.
   bool qosAclSharingSupported() const { return qosAclSharingSupported_.get(); }
   void
   qosAclSharingSupportedIs( bool v ) {
      attributeIs( qosAclSharingSupported_, v, &NotifieeConst::onQosAclSharingSupported );
   }

   // IPv6 key widths of port ACLs and of QoS policies.
   TcamBankSharingMode paclIpv6KeyWidthMode() const { return paclIpv6KeyWidthMode_.get(); }
   void
   paclIpv6KeyWidthModeIs( TcamBankSharingMode v ) {
      attributeIs( paclIpv6KeyWidthMode_, v, &NotifieeConst::onPaclIpv6KeyWidthMode );
   }
   TcamBankSharingMode qosIpv6KeyWidthMode() const { return qosIpv6KeyWidthMode_.get(); }
   void
   qosIpv6KeyWidthModeIs( TcamBankSharingMode v ) {
      attributeIs( qosIpv6KeyWidthMode_, v, &NotifieeConst::onQosIpv6KeyWidthMode );
   }

 private:
   Kiln::Attribute< bool > paclSliceSharingSupported_;
   Kiln::Attribute< bool > mirrorAclSliceSharingSupported_;
   Kiln::Attribute< bool > qosAclSliceSharingSupported_;
   Kiln::Attribute< bool > ingressRaclSharingSupported_;
   Kiln::Attribute< bool > qosAclSharingSupported_;
   Kiln::Attribute< TcamBankSharingMode > paclIpv6KeyWidthMode_{ tcamBankSharingModeDefault };
   Kiln::Attribute< TcamBankSharingMode > qosIpv6KeyWidthMode_{ tcamBankSharingModeDefault };
};

} // namespace Acl
