<?xml version="1.0" encoding="UTF-8"?>
<!-- Shows an XML document as coloured markup: one block per element, children indented by the
     page's stylesheet (.colorizedxml). Used by the XML tag of page layouts. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="html" encoding="UTF-8" indent="no"/>

  <xsl:template match="/">
    <xsl:apply-templates select="node()"/>
  </xsl:template>

  <xsl:template match="*">
    <div class="xmlelement">
      <xsl:call-template name="start-tag"/>
      <xsl:if test="node()">
        <xsl:apply-templates select="node()"/>
        <xsl:call-template name="end-tag"/>
      </xsl:if>
    </div>
  </xsl:template>

  <xsl:template name="start-tag">
    <span class="xmlpunct">&lt;</span>
    <span class="xmltag"><xsl:value-of select="name()"/></span>
    <xsl:call-template name="namespaces"/>
    <xsl:apply-templates select="@*"/>
    <span class="xmlpunct">
      <xsl:choose>
        <xsl:when test="node()">&gt;</xsl:when>
        <xsl:otherwise> /&gt;</xsl:otherwise>
      </xsl:choose>
    </span>
  </xsl:template>

  <xsl:template name="end-tag">
    <span class="xmlpunct">&lt;/</span>
    <span class="xmltag"><xsl:value-of select="name()"/></span>
    <span class="xmlpunct">&gt;</span>
  </xsl:template>

  <!-- The namespaces this element declares: those its parent does not have with the same URI. -->
  <xsl:template name="namespaces">
    <xsl:variable name="parent" select=".."/>
    <xsl:for-each select="namespace::*[name() != 'xml']">
      <xsl:variable name="prefix" select="name()"/>
      <xsl:if test="not($parent/namespace::*[name() = $prefix and . = current()])">
        <xsl:text> </xsl:text>
        <span class="xmlattrname">
          <xsl:text>xmlns</xsl:text>
          <xsl:if test="$prefix != ''">:<xsl:value-of select="$prefix"/></xsl:if>
        </span>
        <span class="xmlpunct">="</span>
        <span class="xmlattrvalue"><xsl:value-of select="."/></span>
        <span class="xmlpunct">"</span>
      </xsl:if>
    </xsl:for-each>
  </xsl:template>

  <xsl:template match="@*">
    <xsl:text> </xsl:text>
    <span class="xmlattrname"><xsl:value-of select="name()"/></span>
    <span class="xmlpunct">="</span>
    <span class="xmlattrvalue"><xsl:value-of select="."/></span>
    <span class="xmlpunct">"</span>
  </xsl:template>

  <xsl:template match="text()">
    <xsl:if test="normalize-space(.) != ''">
      <span class="xmltext"><xsl:value-of select="."/></span>
    </xsl:if>
  </xsl:template>

  <xsl:template match="comment()">
    <div class="xmlcomment">&lt;!--<xsl:value-of select="."/>--&gt;</div>
  </xsl:template>

  <xsl:template match="processing-instruction()">
    <div class="xmlpi">&lt;?<xsl:value-of select="name()"/><xsl:text> </xsl:text><xsl:value-of select="."/>?&gt;</div>
  </xsl:template>
</xsl:stylesheet>
