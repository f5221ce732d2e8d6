#ifndef ZKIT_PREVIEW_VOCABULARY_H
#define ZKIT_PREVIEW_VOCABULARY_H

#include <QByteArray>
#include <QString>

/*!
 * The XML vocabulary as the registries and meta-objects define it: which
 * element names exist, and which attributes each takes.
 */
namespace Vocabulary {

/*! Every registered class, grouped as widgets, windows and helpers. */
QString listClasses();

/*!
 * The attributes of \a className: its chain of base classes, then every
 * writable property with its type, most derived class first; enumerations
 * and flags list their keys. Empty when no registry knows the class.
 */
QString describe(const QByteArray &className);

} // namespace Vocabulary

#endif
