#ifndef ZMETHODINVOKER_H
#define ZMETHODINVOKER_H

#include "zhelper.h"

/*!
 * \brief A helper that calls a method of its target.
 *
 * It declares no properties of its own: it reads the dynamic properties that
 * undeclared attributes become. "method" names the method; "arguments"
 * lists its arguments as an x:invoke element does ("int(5),QString(a)",
 * objects by their registered names); "connect" is "auto", "direct" or
 * "queue". execute() fails when the target or the method is missing or the
 * arguments do not read.
 * \code
 * <ZMethodInvoker targetPath="list" method="setCurrentIndex" arguments="int(0)"/>
 * \endcode
 */
class ZKIT_EXPORT ZMethodInvoker : public ZHelper
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit ZMethodInvoker(QObject *parent = nullptr);
    ~ZMethodInvoker() override;

protected:
    bool doExecute() override;
};

#endif // ZMETHODINVOKER_H
